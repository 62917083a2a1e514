#include "ICalendar/DateBounds.h"

#include "ICalendar/CivilTime.h"
#include "ICalendar/ContentLine.h"
#include "ICalendar/RecurrenceRule.h"

#include <algorithm>
#include <charconv>

namespace mivora::ical {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double day = 86'400;
/// Offsets stay below a day.
constexpr double zoneMargin = 26 * 3'600;
/// In a series the zones of start, end and UNTIL add up.
constexpr double seriesMargin = 5 * day;

double secondsOf(const TimeValue &time)
{
    return double(time.local.time_since_epoch().count());
}

std::string_view valueOf(std::string_view line, std::string &buffer)
{
    return ContentLine::parse(unfolded(line, buffer)).value;
}

std::optional<TimeValue> timeOf(std::string_view line, std::string &buffer)
{
    return parseTime(valueOf(line, buffer));
}

/// How long \a event lasts, at most.
double lengthOf(const EventOutline &event, const TimeValue &start, std::string &buffer)
{
    double length = start.isDate ? day : 0;
    if (!event.end.empty()) {
        if (const auto end = timeOf(event.end, buffer))
            length = std::max(length, secondsOf(*end) - secondsOf(start) + (start.isDate ? day : 0));
    }
    if (!event.duration.empty()) {
        if (const auto value = parseDuration(valueOf(event.duration, buffer)))
            length =
                std::max(length, double((value->days + value->seconds).count()) + (start.isDate ? day : 0));
    }
    return length;
}

double number(std::string_view text, double fallback)
{
    std::int64_t value = 0;
    text = withoutBlanks(text);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && value > 0 ? double(value) : fallback;
}

/// From the first to the last occurrence, at most, of a rule whose every period has one; infinite for others.
double countedSpan(std::string_view rule)
{
    const bool weekly = isName(withoutBlanks(rulePart(rule, "FREQ")), "WEEKLY");
    if (!weekly && !isName(withoutBlanks(rulePart(rule, "FREQ")), "DAILY"))
        return infinity;
    for (std::string_view rest = rule; !rest.empty();) {
        const std::string_view one = rest.substr(0, rest.find(';'));
        const std::string_view name = withoutBlanks(one.substr(0, one.find('=')));
        const bool isRestriction = name.size() > 2 && isName(name.substr(0, 2), "BY");
        if (isRestriction && !(weekly && isName(name, "BYDAY")))
            return infinity;
        rest.remove_prefix(std::min(one.size() + 1, rest.size()));
    }
    const double period = (weekly ? 7 : 1) * day * number(rulePart(rule, "INTERVAL"), 1);
    return period * number(rulePart(rule, "COUNT"), infinity);
}

/// When the last occurrence of a series starts that starts at \a start, at the latest.
double lastStart(std::string_view rule, double start)
{
    if (const auto until = parseTime(rulePart(rule, "UNTIL")))
        return std::max(start, secondsOf(*until) + day);
    return start + countedSpan(rule);
}

void extendByTimes(DateBounds &bounds, std::string_view list, double length)
{
    while (!list.empty()) {
        const std::string_view one = list.substr(0, list.find(','));
        const auto time = parseTime(one);
        if (!time) {
            bounds = DateBounds();
            return;
        }
        bounds.earliest = std::min(bounds.earliest, secondsOf(*time) - day - seriesMargin);
        bounds.latest = std::max(bounds.latest, secondsOf(*time) + day + length + seriesMargin);
        list.remove_prefix(std::min(one.size() + 1, list.size()));
    }
}

/// Overrides of all later occurrences move these, too.
bool isOpen(const EventOutline &event, std::string &buffer)
{
    return event.isRepeated ||
           (!event.recurrenceID.empty() &&
            !ContentLine::parse(unfolded(event.recurrenceID, buffer)).parameter("RANGE").empty());
}

} // namespace

DateBounds dateBounds(const EventOutline &event, std::string &buffer)
{
    const auto start = event.start.empty() ? std::nullopt : timeOf(event.start, buffer);
    if (!start || isOpen(event, buffer))
        return {};
    const double length = lengthOf(event, *start, buffer);
    const double from = secondsOf(*start);
    if (event.rule.empty() && event.extraTimes.empty())
        return {from - zoneMargin, from + length + zoneMargin};
    DateBounds bounds{from - zoneMargin, from + length + seriesMargin};
    if (!event.rule.empty())
        bounds.latest = lastStart(valueOf(event.rule, buffer), from) + length + seriesMargin;
    if (!event.extraTimes.empty())
        extendByTimes(bounds, valueOf(event.extraTimes, buffer), length);
    return bounds;
}

} // namespace mivora::ical
