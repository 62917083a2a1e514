#pragma once

#include "Meetings/Timestamp.h"

#include <QTimeZone>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace mivora {

/// A meeting as the test has put it into a calendar; the truth that the application is judged by.
struct PlannedMeeting
{
    /// Also its title.
    std::string uid;
    Timestamp start{};
    Timestamp end{};
    bool hasLink = false;
    bool isDeclined = false;
    bool isAllDay = false;
    /// The identifier of its calendar.
    std::string calendar;

    friend bool operator==(const PlannedMeeting &, const PlannedMeeting &) = default;
};

/// The lines of a VEVENT of this meeting.
std::string eventOf(const PlannedMeeting &meeting);

/// The same as the text of a file.
std::string fileTextOf(const PlannedMeeting &meeting);

/// A meeting at every day at the same time of a zone, whatever its clocks do.
struct DailyMeeting
{
    PlannedMeeting first;
    QByteArray zone;

    std::string fileText() const;

    /// Its occurrence on a day of its zone.
    PlannedMeeting on(QDate day) const;
};

/// The meetings of many days, made up by chance.
class PlannedMeetings
{
public:
    /// \a daily is planned from the beginning.
    PlannedMeetings(std::vector<std::string> calendars, DailyMeeting daily)
        : m_calendars(std::move(calendars)), m_daily(std::move(daily))
    {
    }

    /// A new meeting that starts within \a from and \a to.
    PlannedMeeting makeUp(Timestamp from, Timestamp to, std::mt19937 &chance);

    void put(const PlannedMeeting &meeting) { m_meetings[meeting.uid] = meeting; }

    void remove(const std::string &uid) { m_meetings.erase(uid); }

    const std::map<std::string, PlannedMeeting> &single() const { return m_meetings; }

    const DailyMeeting &daily() const { return m_daily; }

    /// Every meeting that touches the interval, in no order.
    std::vector<PlannedMeeting> touching(Timestamp from, Timestamp to) const;

private:
    std::vector<std::string> m_calendars;
    DailyMeeting m_daily;
    std::map<std::string, PlannedMeeting> m_meetings;
    int m_count = 0;
};

} // namespace mivora
