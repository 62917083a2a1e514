#pragma once

#include "Meetings/Meeting.h"

#include <QDateTime>
#include <QTimeZone>
#include <vector>

/// Meetings and times for tests, in one line each.
namespace mivora {

/// The time written as in "2026-03-10T09:00:00Z" or with an offset, as in "2026-03-10T09:00:00-03:00".
inline Timestamp at(const char *iso8601)
{
    const QDateTime time = QDateTime::fromString(QLatin1String(iso8601), Qt::ISODateWithMs);
    if (!time.isValid() || time.timeSpec() == Qt::LocalTime)
        qFatal("no time with an offset from UTC: %s", iso8601);
    return timestampFromSeconds(double(time.toMSecsSinceEpoch()) / 1000);
}

/// The hour that most tests' meetings are about.
inline const Timestamp ten = at("2026-03-10T10:00:00Z");

/// A snapshot in the calendar "work" whose identifier is its title.
inline EventSnapshot makeSnapshot(const std::string &title, Timestamp start, Seconds length = Seconds(1800))
{
    EventSnapshot snapshot;
    snapshot.eventIdentifier = title;
    snapshot.title = title;
    snapshot.start = start;
    snapshot.end = start + length;
    snapshot.calendarID = "work";
    return snapshot;
}

/// The meeting of such a snapshot: no link, no colour, an answer unknown.
inline Meeting makeMeeting(const std::string &title, Timestamp start, Seconds length = Seconds(1800))
{
    return Meeting::fromSnapshot(makeSnapshot(title, start, length));
}

/// `meeting` with a link of `service`.
inline Meeting withLink(Meeting meeting, Service service = Service::zoom)
{
    meeting.joinLink = JoinLink{service, *Url::parse("https://meet.example/room"), std::nullopt};
    return meeting;
}

/// The titles, in order, to compare lists at a glance.
inline std::vector<std::string> titles(const std::vector<Meeting> &meetings)
{
    std::vector<std::string> result;
    for (const Meeting &meeting : meetings)
        result.push_back(meeting.title);
    return result;
}

/// The title, or "none".
inline std::string titleOf(const std::optional<Meeting> &meeting)
{
    return meeting ? meeting->title : "none";
}

} // namespace mivora
