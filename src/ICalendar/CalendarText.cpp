#include "ICalendar/CalendarText.h"

#include "ICalendar/CalendarHeader.h"
#include "ICalendar/ContentLine.h"
#include "ICalendar/DateBounds.h"
#include "ICalendar/FieldText.h"
#include "ICalendar/Series.h"

#include <algorithm>
#include <functional>

namespace mivora::ical {

namespace {

using namespace std::chrono;

constexpr std::int64_t workPerText = 5'000'000;
/// What copying the fields of recurring events may cost, in bytes.
constexpr std::int64_t bytesPerText = 100'000'000;

enum class Effort { whatMayMatter, everything };

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
            m_wanted.push_back({uid, event.text});
        else if (uid != 0)
            m_others.push_back({uid, event.text.data(), event.text.size()});
    }

    /// What may matter, and all that belongs to the same events, in the order of the text.
    std::vector<std::string_view> relevant();

private:
    struct Wanted
    {
        std::size_t uid = 0;
        std::string_view text;
    };

    struct Other
    {
        std::size_t uid = 0;
        const char *text = nullptr;
        std::size_t size = 0;
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
    std::vector<Wanted> m_wanted;
    std::vector<Other> m_others;
};

std::vector<std::string_view> Sorter::relevant()
{
    std::vector<std::size_t> uids;
    std::vector<std::string_view> texts;
    for (const Wanted &wanted : m_wanted) {
        texts.push_back(wanted.text);
        if (wanted.uid != 0)
            uids.push_back(wanted.uid);
    }
    std::sort(uids.begin(), uids.end());
    if (!uids.empty())
        for (const Other &other : m_others)
            if (std::binary_search(uids.begin(), uids.end(), other.uid))
                texts.emplace_back(other.text, other.size);
    std::sort(texts.begin(), texts.end(), [](auto a, auto b) { return std::less<>()(a.data(), b.data()); });
    return texts;
}

/// Reads and expands the events that are left.
class Reading
{
public:
    Reading(const EventWindow &window, const CalendarOutline &outline, ProblemList &problems)
        : m_window(window), m_problems(problems), m_zones(window.zone, outline.timeZones, horizon(window))
    {
    }

    std::vector<Occurrence> read(const std::vector<std::string_view> &texts)
    {
        std::vector<EventTimes> events;
        events.reserve(texts.size());
        for (const std::string_view text : texts)
            events.push_back(readEventTimes(text, m_zones, m_problems));
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
        std::vector<SeriesTime> times = expandSeries(components, {m_window, m_zones, m_problems, m_work});
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
    ProblemList &m_problems;
    ZoneTable m_zones;
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
