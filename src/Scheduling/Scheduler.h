#pragma once

#include "Scheduling/MeetingEvents.h"

#include <QObject>
#include <QTimeZone>

namespace mivora {

class Clock;
class EventSource;
class Preferences;

/// What the user decided about single meetings, by Meeting::id. Lives in memory only.
struct Decisions
{
    /// The panel of the meeting stays hidden until then.
    std::map<std::string, Timestamp> snoozedUntil;
    std::set<std::string> dismissed;
    std::set<std::string> joined;

    /// Whether none of them hides the panel of the meeting at `now`.
    bool allowPanel(const std::string &meetingID, Timestamp now) const;

    /// Forgets all decisions about other meetings than these.
    void keepOnly(const std::vector<Meeting> &meetings);
};

enum class Day { today, tomorrow };

/// The central state: today's meetings that still matter, the next one, and the one whose panel is due.
///
/// Everything is computed anew by refresh(). What the user decided about a meeting (snoozed, dismissed,
/// joined) lives in memory only and is forgotten when the meeting leaves today's list. Main thread only.
class Scheduler final : public QObject
{
    Q_OBJECT

public:
    /// How long Snooze hides the panel.
    static constexpr Seconds snoozeLength{60};

    /// Fetches nothing until the first refresh(). The three must outlive the scheduler.
    Scheduler(EventSource &source, const Preferences &prefs, const Clock &clock);

    /// Recomputes all state from the calendars and settings, then calls the callbacks. Not re-entrant: called
    /// from a callback or a slot of changed() it asserts in debug builds and is queued in release builds.
    void refresh();

    /// Hides the panel of the meeting for a minute from now, replacing an earlier snooze.
    void snooze(const std::string &meetingID);

    /// Hides the panel of the meeting for good.
    void dismiss(const std::string &meetingID);

    /// Remembers that the meeting was joined; its panel does not come back.
    void markJoined(const std::string &meetingID);

    /// Today's meetings that have not ended, sorted by start, then title.
    const std::vector<Meeting> &todaysMeetings() const { return m_todaysMeetings; }

    /// Tomorrow's meetings; filled from 18:00 on when nothing is left today.
    const std::vector<Meeting> &tomorrowsMeetings() const { return m_tomorrowsMeetings; }

    /// The meetings of `day` as above at the last refresh, with those that the settings leave out.
    std::vector<Meeting> withLeftOut(Day day) const { return fetch(day, selectedCalendars(), true); }

    /// The next meeting; a running one stays next until it ends.
    const std::optional<Meeting> &next() const { return m_next; }

    /// The meeting whose panel is to be shown now.
    const std::optional<Meeting> &panelRequest() const { return m_panelRequest; }

    /// The first instant after `now` at which a refresh can have another result by the passing of time
    /// alone.
    Timestamp nextChangeAfter(Timestamp now) const;

    /// The zone whose days are meant: the system's current one unless another is set.
    QTimeZone timeZone() const;

    /// Takes effect at the next refresh.
    void setTimeZone(const QTimeZone &zone) { m_zone = zone; }

    /// Called when another meeting, told by its id, or none is to have the panel. Must not call refresh().
    std::function<void(const std::optional<Meeting> &)> onPanelChange;
    /// Called at the end of every refresh. Must not call refresh().
    std::function<void()> onRefresh;

Q_SIGNALS:
    /// One of the lists, the next meeting or the panel request is not what it was.
    void changed();
    /// `event` is a name of meetingEvent. Must not call refresh().
    void happened(const char *event, const Meeting &meeting);

private:
    using CalendarSelection = std::optional<std::set<std::string>>;

    /// The calendars to read; nothing when all are.
    CalendarSelection selectedCalendars() const;
    /// The relevant meetings of the day; none without access, nor of a tomorrow that is not looked ahead to.
    std::vector<Meeting> fetch(Day day, const CalendarSelection &selection, bool withLeftOut = false) const;
    /// Returns whether any of them is not what it was.
    bool updateMeetings();
    std::optional<std::string> panelMeetingID() const;

    EventSource &m_source;
    const Preferences &m_prefs;
    const Clock &m_clock;
    std::optional<QTimeZone> m_zone;
    /// When the last refresh was.
    Timestamp m_now{};
    std::vector<Meeting> m_todaysMeetings;
    std::vector<Meeting> m_tomorrowsMeetings;
    std::optional<Meeting> m_next;
    std::optional<Meeting> m_panelRequest;
    Decisions m_decisions;
    MeetingEvents m_events;
    bool m_isRefreshing = false;
};

} // namespace mivora
