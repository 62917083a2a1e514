#include "PlannedMeetings.h"

#include <QDateTime>

namespace mivora {

namespace {

QDateTime utc(Timestamp time)
{
    return QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(time)), Qt::UTC);
}

std::string written(Timestamp time)
{
    return utc(time).toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toStdString();
}

std::string times(const PlannedMeeting &meeting)
{
    if (meeting.isAllDay)
        return "DTSTART;VALUE=DATE:" + written(meeting.start).substr(0, 8) + "\r\n";
    return "DTSTART:" + written(meeting.start) + "\r\nDTEND:" + written(meeting.end) + "\r\n";
}

std::string withTimes(const PlannedMeeting &meeting, const std::string &times)
{
    std::string text = "BEGIN:VEVENT\r\nDTSTAMP:20260101T000000Z\r\nUID:";
    text.append(meeting.uid).append("\r\nSUMMARY:").append(meeting.uid).append("\r\n").append(times);
    if (meeting.hasLink)
        text.append("LOCATION:https://zoom.us/j/123456789?pwd=").append(meeting.uid).append("\r\n");
    if (meeting.isDeclined)
        text.append("ATTENDEE;PARTSTAT=DECLINED:mailto:me@example.com\r\n");
    return text.append("END:VEVENT\r\n");
}

std::string inFile(const std::string &event)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//EN\r\n" + event + "END:VCALENDAR\r\n";
}

int from(int first, int last, std::mt19937 &chance)
{
    return std::uniform_int_distribution(first, last)(chance);
}

} // namespace

std::string eventOf(const PlannedMeeting &meeting)
{
    return withTimes(meeting, times(meeting));
}

std::string fileTextOf(const PlannedMeeting &meeting)
{
    return inFile(eventOf(meeting));
}

std::string DailyMeeting::fileText() const
{
    const QDateTime start = utc(first.start).toTimeZone(QTimeZone(zone));
    std::string times = "DTSTART;TZID=" + zone.toStdString() + ':';
    times.append(start.toString(QStringLiteral("yyyyMMdd'T'HHmmss")).toStdString());
    times.append("\r\nDURATION:PT" + std::to_string(int((first.end - first.start).count())) + "S\r\n");
    return inFile(withTimes(first, times.append("RRULE:FREQ=DAILY\r\n")));
}

PlannedMeeting DailyMeeting::on(QDate day) const
{
    const QTime time = utc(first.start).toTimeZone(QTimeZone(zone)).time();
    PlannedMeeting meeting = first;
    meeting.start = timestampFromSeconds(double(QDateTime(day, time, QTimeZone(zone)).toSecsSinceEpoch()));
    meeting.end = meeting.start + (first.end - first.start);
    return meeting;
}

PlannedMeeting PlannedMeetings::makeUp(Timestamp earliest, Timestamp latest, std::mt19937 &chance)
{
    const auto oneIn = [&](int count) { return from(1, count, chance) == 1; };
    PlannedMeeting meeting;
    meeting.uid = "Meeting " + std::to_string(++m_count);
    // Most begin at a full five minutes, so that many begin together.
    const int step = oneIn(4) ? 1 : 300;
    const auto first = std::int64_t(secondsSinceEpoch(earliest)) / step + 1;
    const auto last = std::max(std::int64_t(secondsSinceEpoch(latest)) / step, first);
    meeting.start =
        timestampFromSeconds(double(std::uniform_int_distribution<std::int64_t>(first, last)(chance) * step));
    meeting.end = meeting.start + std::chrono::minutes(5 * from(1, 18, chance));
    meeting.hasLink = !oneIn(4);
    meeting.isDeclined = oneIn(10);
    meeting.isAllDay = oneIn(15);
    meeting.calendar = m_calendars[std::size_t(from(0, int(m_calendars.size()) - 1, chance))];
    return meeting;
}

std::vector<PlannedMeeting> PlannedMeetings::touching(Timestamp from, Timestamp to) const
{
    std::vector<PlannedMeeting> found;
    const auto consider = [&](const PlannedMeeting &meeting) {
        if (meeting.start < to && meeting.end > from)
            found.push_back(meeting);
    };
    for (const auto &[uid, meeting] : m_meetings)
        consider(meeting);
    const QDate last = utc(to).date().addDays(1);
    for (QDate day = utc(from).date().addDays(-1); day <= last; day = day.addDays(1))
        consider(m_daily.on(day));
    return found;
}

} // namespace mivora
