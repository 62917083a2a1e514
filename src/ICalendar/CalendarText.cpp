#include "ICalendar/CalendarText.h"

#include "ICalendar/CalendarHeader.h"
#include "ICalendar/ContentLine.h"
#include "ICalendar/DateBounds.h"
#include "ICalendar/FieldText.h"
#include "ICalendar/Series.h"

#include <algorithm>
#include <functional>
#include <map>

namespace mivora::ical {

namespace {

using namespace std::chrono;

constexpr std::int64_t workPerText = 5'000'000;
constexpr std::int64_t workPerZones = 2'000'000;
/// What copying the fields of recurring events may cost, in bytes.
constexpr std::int64_t bytesPerText = 100'000'000;

enum class Effort { whatMayMatter, everything };

/// A VEVENT without its BEGIN and END, and the number of the calendar object that it belongs to.
struct FoundEvent
{
    std::string_view text;
    std::size_t object = 0;
};

/// The events of a text, sorted out by their dates while the text is split.
class Sorter final : public OutlineReader
{
public:
    Sorter(const EventWindow &window, Effort effort, CalendarText &result)
        : m_window(window), m_effort(effort), m_result(result)
    {
    }

    void readEvent(const EventOutline &event) override
    {
        const DateBounds bounds = dateBounds(event, m_buffer);
        m_result.earliest = std::min(m_result.earliest, bounds.earliest);
        m_result.latest = std::max(m_result.latest, bounds.latest);
        const bool isWanted = m_effort == Effort::everything || bounds.mayTouch(m_window);
        const std::size_t uid = event.uid.empty() ? 0 : ical::uidHash(uidOf(event.uid, m_buffer));
        if (uid != 0)
            m_result.versions.push_back(versionOf(uid, event));
        if (isWanted)
            m_wanted.push_back({uid, {event.text, event.object}});
        else if (uid != 0)
            m_others.push_back({uid, {event.text, event.object}});
    }

    /// What may matter, and all that belongs to the same events, in the order of the text.
    std::vector<FoundEvent> relevant();

private:
    struct Sorted
    {
        std::size_t uid = 0;
        FoundEvent event;
    };

    EventVersion versionOf(std::size_t uid, const EventOutline &event)
    {
        EventVersion version{uid};
        if (!event.sequence.empty())
            version.sequence = sequenceOf(ContentLine::parse(unfolded(event.sequence, m_buffer)).value);
        if (!event.stamp.empty())
            if (const auto time = parseTime(ContentLine::parse(unfolded(event.stamp, m_buffer)).value))
                version.stamp = asUtc(time->local);
        return version;
    }

    const EventWindow &m_window;
    Effort m_effort;
    CalendarText &m_result;
    std::string m_buffer;
    std::vector<Sorted> m_wanted;
    std::vector<Sorted> m_others;
};

std::vector<FoundEvent> Sorter::relevant()
{
    std::vector<std::size_t> uids;
    std::vector<FoundEvent> events;
    for (const Sorted &wanted : m_wanted) {
        events.push_back(wanted.event);
        if (wanted.uid != 0)
            uids.push_back(wanted.uid);
    }
    std::sort(uids.begin(), uids.end());
    if (!uids.empty())
        for (const Sorted &other : m_others)
            if (std::binary_search(uids.begin(), uids.end(), other.uid))
                events.push_back(other.event);
    std::sort(events.begin(), events.end(), [](const FoundEvent &a, const FoundEvent &b) {
        return std::less<>()(a.text.data(), b.text.data());
    });
    return events;
}

/// Reads and expands the events that are left.
class Reading
{
public:
    Reading(const EventWindow &window, const CalendarOutline &outline, ProblemList &problems)
        : m_window(window), m_outline(outline), m_problems(problems), m_floating(window.zone)
    {
    }

    std::vector<Occurrence> read(const std::vector<FoundEvent> &found)
    {
        std::vector<EventTimes> events;
        events.reserve(found.size());
        for (const auto &[text, object] : found)
            events.push_back(readEventTimes(text, zonesOf(object), m_problems));
        std::stable_sort(events.begin(), events.end(),
                         [](const EventTimes &a, const EventTimes &b) { return a.uid < b.uid; });
        for (auto begin = events.begin(); begin != events.end();) {
            // Events without UID have nothing to do with each other.
            const auto end = begin->uid.empty()
                                 ? begin + 1
                                 : std::find_if(begin, events.end(), [&](const EventTimes &event) {
                                       return event.uid != begin->uid;
                                   });
            expand({begin, end});
            begin = end;
        }
        return inOrder();
    }

private:
    struct Found
    {
        const char *position = nullptr;
        Occurrence event;
    };

    ZoneTable &zonesOf(std::size_t object)
    {
        return m_zones.try_emplace(object, m_outline.timeZones[object], horizon(m_window), m_zoneWork)
            .first->second;
    }

    static LocalTime horizon(const EventWindow &window)
    {
        const double end = std::clamp(window.to.time_since_epoch().count(), -62.2e9, 253.5e9);
        return LocalTime(seconds(std::int64_t(end))) + days(800);
    }

    void expand(std::span<const EventTimes> components)
    {
        for (const EventTimes &event : components)
            if (!event.start)
                m_problems.add(event.text.data(), "VEVENT without a DTSTART that can be read");
        std::vector<SeriesTime> times = expandSeries(components, {m_window, m_floating, m_problems, m_work});
        std::sort(times.begin(), times.end(), [](const SeriesTime &a, const SeriesTime &b) {
            return std::pair(a.event, a.start) < std::pair(b.event, b.start);
        });
        const EventTimes *known = nullptr;
        Occurrence fields;
        for (const SeriesTime &time : times) {
            if (time.event != std::exchange(known, time.event))
                fields = fieldsOf(*time.event);
            else if (!m_bytes.spend(sizeof(Occurrence) + std::int64_t(time.event->text.size())))
                continue;
            add(fields, time);
        }
        if (m_bytes.left < 0)
            m_problems.add(components.front().text.data(),
                           "The calendar recurs too often; a part of it is left out");
    }

    static Occurrence fieldsOf(const EventTimes &times)
    {
        Occurrence event;
        readEventFields(times.text, event);
        if (!times.uid.empty())
            event.uid = times.uid;
        event.isAllDay = times.start->value.isDate;
        return event;
    }

    void add(const Occurrence &fields, const SeriesTime &time)
    {
        m_found.push_back({time.event->text.data(), fields});
        m_found.back().event.start = time.start;
        m_found.back().event.end = time.end;
    }

    std::vector<Occurrence> inOrder()
    {
        std::sort(m_found.begin(), m_found.end(), [](const Found &a, const Found &b) {
            return std::pair(a.event.start, a.position) < std::pair(b.event.start, b.position);
        });
        std::vector<Occurrence> events;
        events.reserve(m_found.size());
        for (Found &found : m_found)
            events.push_back(std::move(found.event));
        return events;
    }

    const EventWindow &m_window;
    const CalendarOutline &m_outline;
    ProblemList &m_problems;
    SystemZone m_floating;
    WorkBudget m_zoneWork{workPerZones};
    /// By the number of the calendar object.
    std::map<std::size_t, ZoneTable> m_zones;
    WorkBudget m_work{workPerText};
    WorkBudget m_bytes{bytesPerText};
    std::vector<Found> m_found;
};

CalendarText readText(std::string_view text, const EventWindow &window, Effort effort)
{
    static constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    CalendarText result;
    ProblemList problems(text);
    Sorter sorter(window, effort, result);
    const CalendarOutline outline = scanCalendar(text, sorter, problems);
    readHeader(outline.header, result);
    if (const auto relevant = sorter.relevant(); !relevant.empty())
        result.occurrences = Reading(window, outline, problems).read(relevant);
    result.problems = problems.numbered();
    return result;
}

} // namespace

std::size_t uidHash(std::string_view uid)
{
    return std::hash<std::string_view>()(uid) | 1;
}

CalendarText readCalendarText(std::string_view text, const EventWindow &window)
{
    return readText(text, window, Effort::whatMayMatter);
}

CalendarText readCalendarTextInFull(std::string_view text, const EventWindow &window)
{
    return readText(text, window, Effort::everything);
}

} // namespace mivora::ical
