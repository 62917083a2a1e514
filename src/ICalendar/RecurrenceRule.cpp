#include "ICalendar/RecurrenceRule.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <charconv>

namespace mivora::ical {

namespace {

/// Longer than the longest rule that names every value once.
constexpr std::size_t longestRule = 8192;

std::optional<int> numberIn(std::string_view text, int lowest, int highest)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < lowest || number > highest)
        return std::nullopt;
    return number;
}

/// Values that are none are left out. Negative ones, which count from the end, have a place of their own
/// where they are allowed.
template<std::size_t Size> void fill(std::bitset<Size> &set, std::string_view list, int lowest, int highest)
{
    const bool hasPlaceAbove = Size > 2 * std::size_t(highest);
    while (!list.empty()) {
        const auto value = numberIn(takePart(list, ','), hasPlaceAbove ? -highest : lowest, highest);
        if (value && (*value < 0 || *value >= lowest))
            set.set(std::size_t(*value < 0 ? highest - *value : *value));
    }
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

constexpr std::pair<std::string_view, unsigned> weekdayNames[] = {{"SU", 0}, {"MO", 1}, {"TU", 2}, {"WE", 3},
                                                                  {"TH", 4}, {"FR", 5}, {"SA", 6}};

constexpr std::pair<std::string_view, Skip> skips[] = {
    {"OMIT", Skip::omit}, {"BACKWARD", Skip::backward}, {"FORWARD", Skip::forward}};

void fillWeekdays(std::vector<RecurrenceRule::Weekday> &weekdays, std::string_view list)
{
    while (!list.empty()) {
        const std::string_view text = takePart(list, ',');
        const std::size_t nameAt = std::max<std::size_t>(text.size(), 2) - 2;
        const std::string_view ordinal = withoutBlanks(text.substr(0, nameAt));
        const auto number = ordinal.empty() ? 0 : numberIn(ordinal, -366, 366);
        RecurrenceRule::Weekday weekday{number.value_or(0)};
        if (number && choose(weekday.day, text.substr(nameAt), weekdayNames))
            weekdays.push_back(weekday);
    }
}

void fillPositions(std::vector<int> &positions, std::string_view list)
{
    while (!list.empty())
        if (const auto position = numberIn(takePart(list, ','), -366, 366); position.value_or(0) != 0)
            positions.push_back(*position);
}

/// Nothing when `text` is no number above 0. One of more digits than that makes no difference in ten thousand
/// years.
std::optional<std::int64_t> countIn(std::string_view text)
{
    constexpr std::int64_t largest = 400'000'000'000;
    std::int64_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error == std::errc::result_out_of_range)
        count = largest;
    if (end != text.data() + text.size() || count < 1)
        return std::nullopt;
    return std::min(count, largest);
}

/// Dates may have their parts parted, which is ISO 8601 but no iCalendar.
std::optional<TimeValue> untilIn(std::string_view text)
{
    std::string digits(text);
    std::erase_if(digits, [](char c) { return c == '-' || c == ':'; });
    return parseTime(digits);
}

struct Part
{
    std::string_view name;
    void (*read)(RecurrenceRule &rule, std::string_view value);
};

constexpr Part parts[] = {
    {"INTERVAL", [](auto &rule, auto text) { rule.interval = countIn(text).value_or(1); }},
    {"COUNT", [](auto &rule, auto text) { rule.count = countIn(text); }},
    {"UNTIL", [](auto &rule, auto text) { rule.until = untilIn(text); }},
    {"WKST", [](auto &rule, auto text) { choose(rule.weekStart, text, weekdayNames); }},
    {"BYMONTH", [](auto &rule, auto text) { fill(rule.months, text, 1, 12); }},
    {"BYMONTHDAY", [](auto &rule, auto text) { fill(rule.monthDays, text, 1, 31); }},
    {"BYYEARDAY", [](auto &rule, auto text) { fill(rule.yearDays, text, 1, 366); }},
    {"BYWEEKNO", [](auto &rule, auto text) { fill(rule.weeks, text, 1, 53); }},
    {"BYDAY", [](auto &rule, auto text) { fillWeekdays(rule.weekdays, text); }},
    {"BYHOUR", [](auto &rule, auto text) { fill(rule.hours, text, 0, 23); }},
    {"BYMINUTE", [](auto &rule, auto text) { fill(rule.minutes, text, 0, 59); }},
    {"BYSECOND", [](auto &rule, auto text) { fill(rule.seconds, text, 0, 60); }},
    {"BYSETPOS", [](auto &rule, auto text) { fillPositions(rule.positions, text); }},
    {"SKIP", [](auto &rule, auto text) { choose(rule.skip, text, skips); }},
};

/// Takes one "NAME=value" off the front of a rule. Parts without a value are passed over.
std::pair<std::string_view, std::string_view> takeRulePart(std::string_view &rule)
{
    while (!rule.empty()) {
        std::string_view value = takePart(rule, ';');
        const std::string_view name = takePart(value, '=');
        if (value = withoutBlanks(value); !value.empty())
            return {name, value};
    }
    return {};
}

} // namespace

std::optional<RecurrenceRule> RecurrenceRule::parse(std::string_view text)
{
    if (text.size() > longestRule)
        return std::nullopt;
    RecurrenceRule rule;
    std::bitset<std::size(parts)> seen;
    bool hasFrequency = false;
    while (!text.empty()) {
        const auto [name, value] = takeRulePart(text);
        if (isName(name, "RSCALE") && !isName(value, "GREGORIAN"))
            return std::nullopt;
        if (isName(name, "FREQ") && !hasFrequency)
            hasFrequency = choose(rule.frequency, value, frequencies);
        for (std::size_t i = 0; i < seen.size(); ++i)
            if (isName(name, parts[i].name) && !seen.test(i)) {
                seen.set(i);
                parts[i].read(rule, value);
            }
    }
    // A leap second is taken as the second before.
    if (rule.seconds.test(60))
        rule.seconds.reset(60).set(59);
    return hasFrequency ? std::optional(std::move(rule)) : std::nullopt;
}

bool RecurrenceRule::namesOnlyWeekdays() const
{
    return months.none() && monthDays.none() && yearDays.none() && weeks.none() && hours.none() &&
           minutes.none() && seconds.none() && positions.empty();
}

} // namespace mivora::ical
