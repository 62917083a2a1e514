#include "ICalendar/CalendarOutline.h"

#include "ICalendar/CivilTime.h"
#include "ICalendar/ContentLine.h"

#include <algorithm>

namespace mivora::ical {

namespace {

enum class Place { outside, calendar, event, timeZone, other };

/// The state of one pass.
class Scan
{
public:
    Scan(std::string_view text, OutlineReader &reader, ProblemList &problems)
        : m_rest(text), m_reader(reader), m_problems(problems)
    {
    }

    CalendarOutline run()
    {
        const char *const begin = m_rest.data();
        const char *lastLine = begin;
        while (!m_rest.empty()) {
            const std::string_view line = takeLine(m_rest);
            lastLine = line.data();
            readLine(line);
        }
        if (!m_foundAny)
            m_problems.add(begin, "This is no iCalendar text");
        else if (m_place == Place::event)
            reportUnfinished();
        else if (m_place != Place::outside && m_inCalendar)
            m_problems.add(lastLine, "The text ends before END:VCALENDAR");
        return std::move(m_outline);
    }

private:
    void readLine(std::string_view line)
    {
        switch (line.front() | 0x20) {
        case 'b':
            if (hasName(line, "BEGIN"))
                begin(line);
            break;
        case 'e':
            if (hasName(line, "END"))
                end(line);
            break;
        case 'd':
        case 'r':
        case 's':
        case 'u':
            if (m_place == Place::event && m_nested == 0)
                keep(line);
            break;
        default:
            break;
        }
    }

    void begin(std::string_view line)
    {
        const std::string_view name = componentName(line);
        if (isName(name, "VCALENDAR") || isName(name, "VEVENT")) {
            leaveUnfinished();
            if (isName(name, "VEVENT"))
                beginEvent(line);
            else
                beginCalendar();
        } else if (m_place == Place::calendar || m_place == Place::outside) {
            endHeader(line);
            m_place = isName(name, "VTIMEZONE") ? Place::timeZone : Place::other;
            m_bodyBegin = m_rest.data();
            m_nested = 0;
        } else {
            ++m_nested;
        }
    }

    void beginCalendar()
    {
        m_place = Place::calendar;
        m_inCalendar = m_foundAny = true;
        m_outline.timeZones.emplace_back();
        if (!m_outline.header.data())
            m_outline.header = m_rest;
    }

    void beginEvent(std::string_view line)
    {
        endHeader(line);
        m_place = Place::event;
        m_foundAny = true;
        m_eventBegin = line.data();
        m_bodyBegin = m_rest.data();
        m_nested = 0;
        m_event = {};
        m_event.object = m_outline.timeZones.size() - 1;
    }

    void end(std::string_view line)
    {
        const std::string_view name = componentName(line);
        if (isName(name, "VCALENDAR")) {
            leaveUnfinished();
            endHeader(line);
            m_place = Place::outside;
            m_inCalendar = false;
        } else if (m_place == Place::event && isName(name, "VEVENT")) {
            // Also when a component within it was left open: its own lines are known by now.
            m_event.text = body(line);
            m_reader.readEvent(m_event);
            m_place = Place::calendar;
        } else if (m_place == Place::timeZone && isName(name, "VTIMEZONE")) {
            m_outline.timeZones.back().push_back(body(line));
            m_place = Place::calendar;
        } else if (m_nested > 0) {
            --m_nested;
        } else if (m_place == Place::other) {
            m_place = Place::calendar;
        }
    }

    void endHeader(std::string_view line)
    {
        if (m_outline.header.data() && !m_hasHeader)
            m_outline.header = {m_outline.header.data(), std::size_t(line.data() - m_outline.header.data())};
        m_hasHeader = m_hasHeader || m_outline.header.data();
    }

    void leaveUnfinished()
    {
        if (m_place == Place::event)
            reportUnfinished();
    }

    void reportUnfinished() { m_problems.add(m_eventBegin, "BEGIN:VEVENT without END:VEVENT"); }

    void keep(std::string_view line)
    {
        EventOutline &event = m_event;
        keepAs(event.start, line, "DTSTART") || keepAs(event.end, line, "DTEND") ||
            keepAs(event.uid, line, "UID") || keepAs(event.duration, line, "DURATION") ||
            keepAs(event.recurrenceID, line, "RECURRENCE-ID") || keepAs(event.sequence, line, "SEQUENCE") ||
            keepAs(event.stamp, line, "DTSTAMP") || keepList(event.rule, line, "RRULE") ||
            keepList(event.extraTimes, line, "RDATE");
    }

    static bool keepAs(std::string_view &slot, std::string_view line, std::string_view name)
    {
        if (!hasName(line, name))
            return false;
        if (slot.empty())
            slot = line;
        return true;
    }

    bool keepList(std::string_view &slot, std::string_view line, std::string_view name)
    {
        const bool repeated = !slot.empty();
        if (!keepAs(slot, line, name))
            return false;
        m_event.isRepeated = m_event.isRepeated || repeated;
        return true;
    }

    std::string_view componentName(std::string_view line)
    {
        const std::string_view whole = unfolded(line, m_buffer);
        return withoutBlanks(whole.substr(std::min(whole.find(':'), whole.size() - 1) + 1));
    }

    std::string_view body(std::string_view endLine) const
    {
        return {m_bodyBegin, std::size_t(endLine.data() - m_bodyBegin)};
    }

    std::string_view m_rest;
    OutlineReader &m_reader;
    ProblemList &m_problems;
    CalendarOutline m_outline;
    EventOutline m_event;
    std::string m_buffer;
    Place m_place = Place::outside;
    const char *m_eventBegin = nullptr;
    const char *m_bodyBegin = nullptr;
    int m_nested = 0;
    bool m_hasHeader = false;
    bool m_inCalendar = false;
    bool m_foundAny = false;
};

} // namespace

CalendarOutline scanCalendar(std::string_view text, OutlineReader &reader, ProblemList &problems)
{
    return Scan(text, reader, problems).run();
}

} // namespace mivora::ical
