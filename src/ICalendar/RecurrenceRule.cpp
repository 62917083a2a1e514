#include "ICalendar/RecurrenceRule.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <charconv>

namespace mivora::ical {

namespace {

/// Longer than the longest rule that names every value once.
constexpr std::size_t longestRule = 8192;

/// Takes what stands before the next \a separator off the front of \a rest, without the blanks around it.
std::string_view takePart(std::string_view &rest, char separator)
{
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    return withoutBlanks(part);
}

template<typename Take> bool forEachValue(std::string_view list, Take take)
{
    while (!list.empty())
        if (const std::string_view value = takePart(list, ','); !value.empty() && !take(value))
            return false;
    return true;
}

std::optional<std::int64_t> numberIn(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Up to \a highest; negative ones, which count from the end, are only allowed where they have a place.
template<std::size_t Size> bool fill(std::bitset<Size> &set, std::string_view list, int lowest, int highest)
{
    const bool hasPlaceAbove = Size > std::size_t(2 * highest);
    return forEachValue(list, [&](std::string_view text) {
        const auto value = numberIn(text);
        if (value && hasPlaceAbove && *value < 0 && *value >= -highest)
            set.set(std::size_t(highest - *value));
        else if (value && *value >= lowest && *value <= highest)
            set.set(std::size_t(*value));
        else
            return false;
        return true;
    });
}

std::optional<unsigned> weekdayIn(std::string_view text)
{
    static constexpr std::string_view names[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
    const auto *found = std::find_if(std::begin(names), std::end(names),
                                     [&](std::string_view name) { return isName(text, name); });
    if (found == std::end(names))
        return std::nullopt;
    return unsigned(found - std::begin(names));
}

bool fillWeekdays(std::vector<RecurrenceRule::Weekday> &weekdays, std::string_view list)
{
    return forEachValue(list, [&](std::string_view text) {
        const auto day = weekdayIn(text.substr(std::max<std::size_t>(text.size(), 2) - 2));
        text.remove_suffix(std::min<std::size_t>(text.size(), 2));
        const auto ordinal = text.empty() ? 0 : numberIn(withoutBlanks(text));
        if (!day || !ordinal || *ordinal < -366 || *ordinal > 366)
            return false;
        weekdays.push_back({int(*ordinal), *day});
        return true;
    });
}

bool fillPositions(std::vector<int> &positions, std::string_view list)
{
    return forEachValue(list, [&](std::string_view text) {
        const auto position = numberIn(text);
        if (!position || *position == 0 || *position < -366 || *position > 366)
            return false;
        positions.push_back(int(*position));
        return true;
    });
}

bool fillCount(std::int64_t &count, std::string_view text)
{
    const auto number = numberIn(text);
    // More seconds than there are in ten thousand years make no difference.
    count = std::min(number.value_or(0), std::int64_t(400'000'000'000));
    return count > 0;
}

template<typename Value, std::size_t Size>
bool choose(Value &value, std::string_view text, const std::pair<std::string_view, Value> (&names)[Size])
{
    const auto *found = std::find_if(std::begin(names), std::end(names),
                                     [&](const auto &name) { return isName(text, name.first); });
    if (found != std::end(names))
        value = found->second;
    return found != std::end(names);
}

constexpr std::pair<std::string_view, Frequency> frequencies[] = {
    {"SECONDLY", Frequency::secondly}, {"MINUTELY", Frequency::minutely}, {"HOURLY", Frequency::hourly},
    {"DAILY", Frequency::daily},       {"WEEKLY", Frequency::weekly},     {"MONTHLY", Frequency::monthly},
    {"YEARLY", Frequency::yearly},
};

constexpr std::pair<std::string_view, Skip> skips[] = {
    {"OMIT", Skip::omit}, {"BACKWARD", Skip::backward}, {"FORWARD", Skip::forward}};

bool readUntil(std::optional<TimeValue> &until, std::string_view text)
{
    until = parseTime(text);
    return until.has_value();
}

bool readWeekStart(unsigned &day, std::string_view text)
{
    const auto found = weekdayIn(text);
    day = found.value_or(day);
    return found.has_value();
}

bool readSeconds(std::bitset<60> &seconds, std::string_view list)
{
    std::bitset<61> withLeapSecond;
    if (!fill(withLeapSecond, list, 0, 60))
        return false;
    for (std::size_t i = 0; i < withLeapSecond.size(); ++i)
        if (withLeapSecond.test(i))
            seconds.set(std::min<std::size_t>(i, 59));
    return true;
}

struct Part
{
    std::string_view name;
    bool (*read)(RecurrenceRule &rule, std::string_view value);
};

constexpr Part parts[] = {
    {"FREQ",
     [](RecurrenceRule &rule, std::string_view text) { return choose(rule.frequency, text, frequencies); }},
    {"INTERVAL", [](RecurrenceRule &rule, std::string_view text) { return fillCount(rule.interval, text); }},
    {"COUNT",
     [](RecurrenceRule &rule, std::string_view text) { return fillCount(rule.count.emplace(), text); }},
    {"UNTIL", [](RecurrenceRule &rule, std::string_view text) { return readUntil(rule.until, text); }},
    {"WKST", [](RecurrenceRule &rule, std::string_view text) { return readWeekStart(rule.weekStart, text); }},
    {"BYMONTH", [](RecurrenceRule &rule, std::string_view text) { return fill(rule.months, text, 1, 12); }},
    {"BYMONTHDAY",
     [](RecurrenceRule &rule, std::string_view text) { return fill(rule.monthDays, text, 1, 31); }},
    {"BYYEARDAY",
     [](RecurrenceRule &rule, std::string_view text) { return fill(rule.yearDays, text, 1, 366); }},
    {"BYWEEKNO", [](RecurrenceRule &rule, std::string_view text) { return fill(rule.weeks, text, 1, 53); }},
    {"BYDAY", [](RecurrenceRule &rule, std::string_view text) { return fillWeekdays(rule.weekdays, text); }},
    {"BYHOUR", [](RecurrenceRule &rule, std::string_view text) { return fill(rule.hours, text, 0, 23); }},
    {"BYMINUTE", [](RecurrenceRule &rule, std::string_view text) { return fill(rule.minutes, text, 0, 59); }},
    {"BYSECOND", [](RecurrenceRule &rule, std::string_view text) { return readSeconds(rule.seconds, text); }},
    {"BYSETPOS",
     [](RecurrenceRule &rule, std::string_view text) { return fillPositions(rule.positions, text); }},
    {"RSCALE", [](RecurrenceRule &, std::string_view text) { return isName(text, "GREGORIAN"); }},
    {"SKIP", [](RecurrenceRule &rule, std::string_view text) { return choose(rule.skip, text, skips); }},
};

} // namespace

std::string_view rulePart(std::string_view text, std::string_view name)
{
    while (!text.empty()) {
        std::string_view value = takePart(text, ';');
        if (isName(takePart(value, '='), name) && !withoutBlanks(value).empty())
            return withoutBlanks(value);
    }
    return {};
}

std::optional<RecurrenceRule> RecurrenceRule::parse(std::string_view text)
{
    if (text.size() > longestRule)
        return std::nullopt;
    RecurrenceRule rule;
    std::bitset<std::size(parts)> seen;
    while (!text.empty()) {
        std::string_view value = takePart(text, ';');
        const std::string_view name = takePart(value, '=');
        const auto *part = std::find_if(std::begin(parts), std::end(parts),
                                        [&](const Part &known) { return isName(name, known.name); });
        const auto index = std::size_t(part - std::begin(parts));
        value = withoutBlanks(value);
        if (part == std::end(parts) || value.empty() || seen.test(index))
            continue;
        seen.set(index);
        if (!part->read(rule, value))
            return std::nullopt;
    }
    // FREQ, the first of them, is the one that no rule can do without.
    return seen.test(0) ? std::optional(std::move(rule)) : std::nullopt;
}

} // namespace mivora::ical
