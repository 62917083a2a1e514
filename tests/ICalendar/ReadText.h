#pragma once

#include "ICalendar/CalendarText.h"

#include <QDateTime>
#include <string>
#include <vector>

/// Small calendars for tests, and their occurrences as lines of text.
namespace mivora::ical {

inline EventWindow windowOf(const char *from, const char *to, const char *zone = "Europe/Berlin")
{
    const auto time = [&](const char *text) {
        QDateTime local = QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate);
        local.setTimeZone(QTimeZone(zone));
        return UtcTime(std::chrono::seconds(local.toSecsSinceEpoch()));
    };
    return {time(from), time(to), QTimeZone(zone)};
}

inline std::string calendarOf(const std::string &lines)
{
    return "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Test//EN\n" + lines + "\nEND:VCALENDAR\n";
}

inline std::string eventOf(const std::string &lines)
{
    return "BEGIN:VEVENT\nUID:a\nSUMMARY:A\n" + lines + "\nEND:VEVENT\n";
}

/// "title start/end" in UTC, with "day" after it for whole days.
inline std::string lineOf(const Occurrence &event)
{
    const auto text = [](Timestamp time) {
        const auto moment =
            QDateTime::fromSecsSinceEpoch(qint64(time.time_since_epoch().count()), QTimeZone::utc());
        return moment.toString(QStringLiteral("MMdd'T'HHmmss")).toStdString();
    };
    return event.title.value_or("-") + ' ' + text(event.start) + '/' + text(event.end) +
           (event.isAllDay ? " day" : "");
}

/// The occurrences of `text` that overlap `day` out of those of the years around it: what the dates of the
/// events ruled out for the day alone must not be among them. Nothing where a rule was cut short.
inline std::optional<std::vector<Occurrence>> occurrencesAmongMore(std::string_view text,
                                                                   const EventWindow &day)
{
    const auto margin = std::chrono::days(500);
    const CalendarText all = readCalendarText(text, {day.from - margin, day.to + margin, day.zone});
    std::vector<Occurrence> found;
    for (const TextProblem &problem : all.problems)
        if (problem.message.find("too often") != std::string::npos || all.problems.size() >= 50)
            return std::nullopt;
    for (const Occurrence &event : all.occurrences)
        if (event.start < day.to &&
            (event.end > day.from || (event.end == event.start && event.start >= day.from)))
            found.push_back(event);
    return found;
}

} // namespace mivora::ical
