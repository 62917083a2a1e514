#include "ICalendar/EventTimes.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <charconv>

namespace mivora::ical {

namespace {

constexpr std::size_t mostProblems = 100;

constexpr double secondsPerDay = 86'400;
/// Offsets stay below a day.
constexpr double zoneMargin = 26 * 3'600;
/// In a series the zones of start, end and UNTIL add up.
constexpr double seriesMargin = 5 * secondsPerDay;

double secondsOf(const TimeValue &time)
{
    return double(time.local.time_since_epoch().count());
}

/// How long an event lasts, at most.
double longestLength(const EventLines &event, const TimeValue &start, std::string &buffer)
{
    const double wholeDay = start.isDate ? secondsPerDay : 0;
    double length = 0;
    if (!event.end.empty())
        if (const auto end = parseTime(ContentLine::parse(event.end, buffer).value))
            length = std::max(length, secondsOf(*end) - secondsOf(start));
    if (!event.duration.empty())
        if (const auto value = parseDuration(ContentLine::parse(event.duration, buffer).value))
            length = std::max(length, double((value->days + value->seconds).count()));
    return length + wholeDay;
}

/// From the first to the last occurrence, at most, of a rule whose every period has one; infinite for others.
double countedSpan(const RecurrenceRule &rule)
{
    const bool isWeekly = rule.frequency == Frequency::weekly;
    const bool isDaily = rule.frequency == Frequency::daily && rule.weekdays.empty();
    if (!rule.count || !(isWeekly || isDaily) || !rule.namesOnlyWeekdays())
        return DateBounds().latest;
    return (isWeekly ? 7 : 1) * secondsPerDay * double(rule.interval) * double(*rule.count);
}

/// When the last occurrence starts of a series that starts at `start`, at the latest. A rule that can't be
/// read counts as one without end: its event is read, and the problem told.
double lastStart(std::string_view line, double start, std::string &buffer)
{
    const auto rule = RecurrenceRule::parse(ContentLine::parse(line, buffer).value);
    if (rule && rule->until)
        return std::max(start, secondsOf(*rule->until) + secondsPerDay);
    return start + (rule ? countedSpan(*rule) : DateBounds().latest);
}

void extendByTimes(DateBounds &bounds, std::string_view list, double length)
{
    while (!list.empty()) {
        const auto time = parseTime(takePart(list, ','));
        if (!time) {
            bounds = DateBounds();
            return;
        }
        bounds.earliest = std::min(bounds.earliest, secondsOf(*time) - secondsPerDay - seriesMargin);
        bounds.latest = std::max(bounds.latest, secondsOf(*time) + secondsPerDay + length + seriesMargin);
    }
}

/// Overrides of all later occurrences move these, too.
bool isThisAndFuture(const EventLines &event, std::string &buffer)
{
    return !event.recurrenceID.empty() &&
           isName(ContentLine::parse(event.recurrenceID, buffer).parameter("RANGE"), "THISANDFUTURE");
}

/// Reads the lines of one VEVENT.
class TimesReader
{
public:
    TimesReader(const EventLines &lines, TimeZones &zones, ProblemList &problems)
        : m_lines(lines), m_zones(zones), m_problems(problems)
    {
    }

    EventTimes read()
    {
        EventTimes times;
        times.text = m_lines.text;
        readVersion(times);
        times.uid = unescapedText(withoutBlanks(valueOf(m_lines.uid)));
        times.isCancelled = isName(withoutBlanks(valueOf(m_lines.status)), "CANCELLED");
        times.start = moment(m_lines.start);
        times.end = moment(m_lines.end);
        times.recurrenceID = moment(m_lines.recurrenceID);
        times.isThisAndFuture = ical::isThisAndFuture(m_lines, m_buffer);
        if (!m_lines.duration.empty() && !(times.duration = parseDuration(valueOf(m_lines.duration))))
            complain("No duration", valueOf(m_lines.duration));
        for (const std::string_view line : m_lines.rules) {
            if (auto rule = RecurrenceRule::parse(valueOf(line)))
                times.rules.push_back(std::move(*rule));
            else
                complain("No recurrence rule that Mivora knows", valueOf(line));
        }
        forEachTime(m_lines.extraTimes, [&](const ContentLine &line, std::string_view text) {
            if (const auto extra = extraTime(line, text))
                times.extraTimes.push_back(*extra);
        });
        forEachTime(m_lines.excludedTimes, [&](const ContentLine &line, std::string_view text) {
            if (const auto time = moment(line, text))
                times.excludedTimes.push_back(*time);
        });
        return times;
    }

private:
    void readVersion(EventTimes &times)
    {
        const std::string_view sequence = withoutBlanks(valueOf(m_lines.sequence));
        std::from_chars(sequence.data(), sequence.data() + sequence.size(), times.sequence);
        if (const auto stamp = parseTime(valueOf(m_lines.stamp)))
            times.stamp = asUtc(stamp->local);
    }

    std::string_view valueOf(std::string_view line)
    {
        m_at = line.data();
        return ContentLine::parse(line, m_buffer).value;
    }

    void complain(std::string_view what, std::string_view value)
    {
        m_problems.add(m_at, std::string(what) + ": " + std::string(value.substr(0, 60)));
    }

    std::optional<Moment> moment(std::string_view line)
    {
        m_at = line.data();
        const ContentLine parts = ContentLine::parse(line, m_buffer);
        return line.empty() ? std::nullopt : moment(parts, parts.value);
    }

    std::optional<Moment> moment(const ContentLine &line, std::string_view text)
    {
        const auto value = parseTime(text);
        if (!value) {
            complain("No date or time", text);
            return std::nullopt;
        }
        return Moment{*value, zoneOf(line, *value)};
    }

    const Zone *zoneOf(const ContentLine &line, const TimeValue &value)
    {
        if (value.isUtc)
            return &m_zones.utc();
        const std::string_view id = line.parameter("TZID");
        if (id.empty() || value.isDate)
            return nullptr;
        const Zone *zone = m_zones.find(m_lines.object, id);
        if (!zone)
            complain("Unknown time zone, taken as local time", id);
        return zone;
    }

    template<typename Take> void forEachTime(const std::vector<std::string_view> &lines, Take take)
    {
        for (const std::string_view line : lines) {
            m_at = line.data();
            const ContentLine parts = ContentLine::parse(line, m_buffer);
            for (std::string_view rest = parts.value; !rest.empty();)
                take(parts, takePart(rest, ','));
        }
    }

    std::optional<ExtraTime> extraTime(const ContentLine &line, std::string_view text)
    {
        const bool isPeriod = text.find('/') != text.npos;
        const auto start = moment(line, takePart(text, '/'));
        if (!start)
            return std::nullopt;
        ExtraTime extra{*start, std::nullopt, parseDuration(text)};
        if (isPeriod && !extra.duration && !(extra.end = moment(line, text)))
            return std::nullopt;
        return extra;
    }

    const EventLines &m_lines;
    TimeZones &m_zones;
    ProblemList &m_problems;
    std::string m_buffer;
    const char *m_at = nullptr;
};

} // namespace

void ProblemList::add(const char *at, std::string message)
{
    if (m_problems.size() < mostProblems)
        m_problems.emplace_back(at, std::move(message));
}

std::vector<TextProblem> ProblemList::numbered()
{
    std::sort(m_problems.begin(), m_problems.end());
    m_problems.erase(std::unique(m_problems.begin(), m_problems.end()), m_problems.end());
    std::vector<TextProblem> result;
    const char *counted = m_text.data();
    std::int64_t line = 1;
    for (auto &[at, message] : m_problems) {
        line += std::count(counted, at, '\n');
        counted = at;
        result.push_back({line, std::move(message)});
    }
    return result;
}

void EventLines::keep(std::string_view line)
{
    static constexpr std::pair<std::string_view, std::string_view EventLines::*> once[] = {
        {"DTSTART", &EventLines::start},     {"DTEND", &EventLines::end},
        {"DTSTAMP", &EventLines::stamp},     {"DURATION", &EventLines::duration},
        {"UID", &EventLines::uid},           {"RECURRENCE-ID", &EventLines::recurrenceID},
        {"SEQUENCE", &EventLines::sequence}, {"STATUS", &EventLines::status},
    };
    static constexpr std::pair<std::string_view, std::vector<std::string_view> EventLines::*> lists[] = {
        {"RRULE", &EventLines::rules},
        {"RDATE", &EventLines::extraTimes},
        {"EXDATE", &EventLines::excludedTimes},
    };
    // Most lines are told apart by their first letter.
    const char first = char(line.front() & ~0x20);
    for (const auto &[name, slot] : once)
        if (name.front() == first && (this->*slot).empty() && hasName(line, name)) {
            this->*slot = line;
            return;
        }
    for (const auto &[name, slot] : lists)
        if (name.front() == first && hasName(line, name))
            (this->*slot).push_back(line);
}

DateBounds dateBounds(const EventLines &event)
{
    std::string buffer;
    const auto start = parseTime(ContentLine::parse(event.start, buffer).value);
    if (!start || event.rules.size() > 1 || event.extraTimes.size() > 1 || isThisAndFuture(event, buffer))
        return {};
    const double length = longestLength(event, *start, buffer);
    const double from = secondsOf(*start);
    if (event.rules.empty() && event.extraTimes.empty())
        return {from - zoneMargin, from + length + zoneMargin};
    DateBounds bounds{from - zoneMargin, from + length + seriesMargin};
    if (!event.rules.empty())
        bounds.latest = lastStart(event.rules.front(), from, buffer) + length + seriesMargin;
    if (!event.extraTimes.empty())
        extendByTimes(bounds, ContentLine::parse(event.extraTimes.front(), buffer).value, length);
    return bounds;
}

std::size_t uidHashOf(const EventLines &event)
{
    std::string buffer;
    const std::string_view uid = withoutBlanks(ContentLine::parse(event.uid, buffer).value);
    if (uid.empty())
        return 0;
    return uidHash(uid.find('\\') == uid.npos ? uid : std::string_view(unescapedText(uid)));
}

EventTimes readEventTimes(const EventLines &event, TimeZones &zones, ProblemList &problems)
{
    return TimesReader(event, zones, problems).read();
}

} // namespace mivora::ical
