#include "ICalendar/CalendarText.h"

#include "ICalendar/ContentLine.h"
#include "ICalendar/Series.h"

#include <algorithm>
#include <functional>

namespace mivora::ical {

namespace {

using namespace std::chrono;

constexpr std::int64_t workPerText = 5'000'000;
/// What copying the fields of recurring events may cost, in bytes.
constexpr std::int64_t bytesPerText = 100'000'000;

/// Splits a text into its components in one pass, which looks at the first letters of most lines only.
class CalendarScan
{
public:
    using TakeEvent = std::function<void(const EventLines &)>;

    /// `takeEvent` is given every complete VEVENT, in order. One without END is left out, and a problem.
    CalendarScan(std::string_view text, ProblemList &problems, TakeEvent takeEvent)
        : m_rest(text), m_problems(problems), m_takeEvent(std::move(takeEvent))
    {
    }

    void run()
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
            leaveUnfinished();
        else if (m_place != Place::outside && m_inCalendar)
            m_problems.add(lastLine, "The text ends before END:VCALENDAR");
    }

    const ZoneDefinitions &timeZones() const { return m_timeZones; }

    /// Fills what stands before the first component of the first calendar, the better known of two properties
    /// first.
    void describe(CalendarText &calendar) const
    {
        const auto set = [](std::optional<std::string> &field, const std::string &text) {
            if (!field && !text.empty())
                field = text;
        };
        set(calendar.name, m_appleName);
        set(calendar.name, m_name);
        if (m_appleColor.starts_with('#'))
            calendar.color = m_appleColor;
        set(calendar.color, m_color);
        set(calendar.owner, mailAddress(m_owner));
    }

private:
    enum class Place { outside, calendar, event, timeZone, other };

    void readLine(std::string_view line)
    {
        switch (line.front() | 0x20) {
        case 'b':
            if (hasName(line, "BEGIN"))
                begin(line);
            break;
        case 'e':
            if (hasName(line, "END")) {
                end(line);
                break;
            }
            [[fallthrough]];
        case 'd':
        case 'r':
        case 's':
        case 'u':
            if (m_place == Place::event && m_nested == 0)
                m_event.keep(line);
            break;
        default:
            if (m_isInHeader)
                readHeaderLine(line);
        }
    }

    void readHeaderLine(std::string_view line)
    {
        const std::pair<std::string_view, std::string *> properties[] = {
            {"X-WR-CALNAME", &m_appleName},
            {"NAME", &m_name},
            {"X-APPLE-CALENDAR-COLOR", &m_appleColor},
            {"COLOR", &m_color},
            {"X-WR-OWNER", &m_owner},
        };
        for (const auto &[name, target] : properties)
            if (target->empty() && hasName(line, name))
                *target = unescapedText(withoutBlanks(ContentLine::parse(line, m_buffer).value));
    }

    void begin(std::string_view line)
    {
        const std::string_view name = componentName(line);
        if (isName(name, "VCALENDAR")) {
            leaveUnfinished();
            m_isInHeader = m_timeZones.size() == 1;
            m_timeZones.emplace_back();
            m_place = Place::calendar;
            m_inCalendar = m_foundAny = true;
            return;
        }
        m_isInHeader = false;
        if (isName(name, "VEVENT")) {
            leaveUnfinished();
            m_eventBegin = line.data();
            m_event = {};
            m_foundAny = true;
            beginBody(Place::event);
        } else if (m_place == Place::calendar || m_place == Place::outside) {
            beginBody(isName(name, "VTIMEZONE") ? Place::timeZone : Place::other);
        } else {
            ++m_nested;
        }
    }

    void beginBody(Place place)
    {
        m_place = place;
        m_bodyBegin = m_rest.data();
        m_nested = 0;
    }

    void end(std::string_view line)
    {
        const std::string_view name = componentName(line);
        const std::string_view body(m_bodyBegin, m_bodyBegin ? std::size_t(line.data() - m_bodyBegin) : 0);
        if (isName(name, "VCALENDAR")) {
            leaveUnfinished();
            m_place = Place::outside;
            m_inCalendar = m_isInHeader = false;
        } else if (m_place == Place::event && isName(name, "VEVENT")) {
            // Also when a component within it was left open: its own lines are known by now.
            m_event.text = body;
            m_event.object = m_timeZones.size() - 1;
            m_takeEvent(m_event);
            m_place = Place::calendar;
        } else if (m_place == Place::timeZone && isName(name, "VTIMEZONE")) {
            m_timeZones.back().push_back(body);
            m_place = Place::calendar;
        } else if (m_nested > 0) {
            --m_nested;
        } else if (m_place == Place::other) {
            m_place = Place::calendar;
        }
    }

    void leaveUnfinished()
    {
        if (m_place == Place::event)
            m_problems.add(m_eventBegin, "BEGIN:VEVENT without END:VEVENT");
    }

    std::string_view componentName(std::string_view line)
    {
        return withoutBlanks(ContentLine::parse(line, m_buffer).value);
    }

    std::string_view m_rest;
    ProblemList &m_problems;
    TakeEvent m_takeEvent;
    /// The first is for what stands before any calendar.
    ZoneDefinitions m_timeZones{1};
    std::string m_name, m_appleName, m_color, m_appleColor, m_owner;
    EventLines m_event;
    std::string m_buffer;
    Place m_place = Place::outside;
    const char *m_eventBegin = nullptr;
    const char *m_bodyBegin = nullptr;
    int m_nested = 0;
    bool m_isInHeader = false;
    bool m_inCalendar = false;
    bool m_foundAny = false;
};

/// The events of a text that matter for the window, ruled out by their dates while the text is split.
class EventSelection
{
public:
    EventSelection(const EventWindow &window, CalendarText &result) : m_window(window), m_result(result) {}

    void take(const EventLines &event)
    {
        const DateBounds bounds = dateBounds(event);
        m_result.earliest = std::min(m_result.earliest, bounds.earliest);
        m_result.latest = std::max(m_result.latest, bounds.latest);
        const std::size_t uid = uidHashOf(event);
        if (uid != 0)
            m_result.uids.push_back(uid);
        const bool isWanted = bounds.mayTouch(m_window);
        if (isWanted || uid != 0)
            m_events.push_back({uid, event.object, event.text, isWanted});
        if (isWanted)
            m_wanted.push_back(uid);
    }

    /// What may matter, and all that belongs to the same events, in the order of the text.
    std::vector<EventLines> relevant()
    {
        std::sort(m_wanted.begin(), m_wanted.end());
        std::vector<EventLines> relevant;
        for (const Event &event : m_events)
            if (event.isWanted || std::binary_search(m_wanted.begin(), m_wanted.end(), event.uid))
                relevant.push_back(linesOf(event));
        return relevant;
    }

private:
    struct Event
    {
        std::size_t uid;
        std::size_t object;
        std::string_view text;
        bool isWanted;
    };

    static EventLines linesOf(const Event &event)
    {
        EventLines lines;
        lines.text = event.text;
        lines.object = event.object;
        forEachLine(event.text, [&](std::string_view line) { lines.keep(line); });
        return lines;
    }

    const EventWindow &m_window;
    CalendarText &m_result;
    std::vector<Event> m_events;
    /// The events that may touch the window; 0 for those without UID.
    std::vector<std::size_t> m_wanted;
};

/// Expands the events that are left.
class Expansions
{
public:
    Expansions(const EventWindow &window, const ZoneDefinitions &definitions, ProblemList &problems)
        : m_window(window), m_problems(problems), m_zones(window.zone, definitions, horizon(window))
    {
    }

    std::vector<Occurrence> expand(const std::vector<EventLines> &lines)
    {
        std::vector<EventTimes> events;
        events.reserve(lines.size());
        for (const EventLines &event : lines)
            events.push_back(readEventTimes(event, m_zones, m_problems));
        std::stable_sort(events.begin(), events.end(),
                         [](const EventTimes &a, const EventTimes &b) { return a.uid < b.uid; });
        for (auto begin = events.begin(); begin != events.end();) {
            // Events without UID have nothing to do with each other.
            const auto end = begin->uid.empty()
                                 ? begin + 1
                                 : std::find_if(begin, events.end(), [&](const EventTimes &event) {
                                       return event.uid != begin->uid;
                                   });
            expandSeries({begin, end});
            begin = end;
        }
        return inOrder();
    }

private:
    static LocalTime horizon(const EventWindow &window)
    {
        const double end = std::clamp(window.to.time_since_epoch().count(), -62.2e9, 253.5e9);
        return LocalTime(seconds(std::int64_t(end))) + days(800);
    }

    void expandSeries(std::span<const EventTimes> components)
    {
        for (const EventTimes &event : components)
            if (!event.start)
                m_problems.add(event.text.data(), "VEVENT without a DTSTART that can be read");
        std::vector<SeriesTime> times =
            ical::expandSeries(components, {m_window, m_zones.floating(), m_problems, m_work});
        std::sort(times.begin(), times.end(), [](const SeriesTime &a, const SeriesTime &b) {
            return std::pair(a.event, a.start) < std::pair(b.event, b.start);
        });
        const EventTimes *known = nullptr;
        Occurrence occurrence;
        for (const SeriesTime &time : times) {
            if (time.event != std::exchange(known, time.event))
                occurrence = occurrenceOf(*time.event);
            else if (!m_bytes.spend(sizeof(Occurrence) + std::int64_t(time.event->text.size())))
                continue;
            occurrence.start = time.start;
            occurrence.end = time.end;
            m_found.emplace_back(time.event->text.data(), occurrence);
        }
        if (m_bytes.left < 0)
            m_problems.add(components.front().text.data(),
                           "The calendar recurs too often; a part of it is left out");
    }

    static Occurrence occurrenceOf(const EventTimes &times)
    {
        Occurrence occurrence;
        readEventFields(times.text, occurrence);
        if (!times.uid.empty())
            occurrence.uid = times.uid;
        occurrence.isAllDay = times.start->value.isDate;
        return occurrence;
    }

    std::vector<Occurrence> inOrder()
    {
        std::sort(m_found.begin(), m_found.end(), [](const auto &a, const auto &b) {
            return std::pair(a.second.start, a.first) < std::pair(b.second.start, b.first);
        });
        std::vector<Occurrence> occurrences;
        occurrences.reserve(m_found.size());
        for (auto &[position, occurrence] : m_found)
            occurrences.push_back(std::move(occurrence));
        return occurrences;
    }

    const EventWindow &m_window;
    ProblemList &m_problems;
    TimeZones m_zones;
    WorkBudget m_work{workPerText};
    WorkBudget m_bytes{bytesPerText};
    /// With the position of the text that each is from.
    std::vector<std::pair<const char *, Occurrence>> m_found;
};

} // namespace

CalendarText readCalendarText(std::string_view text, const EventWindow &window)
{
    static constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    CalendarText result;
    ProblemList problems(text);
    EventSelection selection(window, result);
    CalendarScan scan(text, problems, [&](const EventLines &event) { selection.take(event); });
    scan.run();
    scan.describe(result);
    if (const auto relevant = selection.relevant(); !relevant.empty())
        result.occurrences = Expansions(window, scan.timeZones(), problems).expand(relevant);
    result.problems = problems.numbered();
    return result;
}

std::size_t uidHash(std::string_view uid)
{
    return std::hash<std::string_view>()(uid) | 1;
}

} // namespace mivora::ical
