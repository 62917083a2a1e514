#pragma once

#include "ICalendar/CalendarText.h"

#include <QDateTime>
#include <gmock/gmock.h>
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

/// A calendar with \a lines in it, which are parted by '\n'.
inline std::string calendarOf(const std::string &lines)
{
    return "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Test//EN\n" + lines + "\nEND:VCALENDAR\n";
}

/// One event with the UID "a", the title "A" and \a lines.
inline std::string eventOf(const std::string &lines)
{
    return "BEGIN:VEVENT\nUID:a\nSUMMARY:A\n" + lines + "\nEND:VEVENT\n";
}

/// "title start/end" in UTC, with "day" after it for whole days.
inline std::string lineOf(const Occurrence &event)
{
    const auto text = [](Timestamp time) {
        const auto moment = QDateTime::fromSecsSinceEpoch(qint64(time.time_since_epoch().count()), Qt::UTC);
        return moment.toString(QStringLiteral("yyyyMMdd'T'HHmmss")).toStdString();
    };
    return event.title.value_or("-") + ' ' + text(event.start) + '/' + text(event.end) +
           (event.isAllDay ? " day" : "");
}

inline std::vector<std::string> linesOf(const CalendarText &calendar)
{
    std::vector<std::string> lines;
    for (const Occurrence &event : calendar.occurrences)
        lines.push_back(lineOf(event));
    return lines;
}

/// The occurrences of \a text by both readers, which have to agree.
inline std::vector<std::string> occurrencesOf(const std::string &text, const EventWindow &window)
{
    const CalendarText quick = readCalendarText(text, window);
    const CalendarText full = readCalendarTextInFull(text, window);
    EXPECT_EQ(quick.occurrences, full.occurrences) << text;
    return linesOf(quick);
}

} // namespace mivora::ical
