#include "ICalendar/RecurrenceRule.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <libical/ical.h>
#include <memory>

namespace mivora::ical {

using namespace std::chrono;

namespace {

/// Longer than the longest rule that names every value once.
constexpr std::size_t longestRule = 8192;

template<std::size_t Size, std::size_t Slots>
bool fill(std::bitset<Size> &set, const short (&values)[Slots], int lowest, int highest, int fromEnd = 0)
{
    for (std::size_t i = 0; i < Slots && values[i] != ICAL_RECURRENCE_ARRAY_MAX; ++i) {
        const int value = values[i];
        if (value < 0 && fromEnd > 0 && -value <= highest)
            set.set(std::size_t(fromEnd - value));
        else if (value >= lowest && value <= highest)
            set.set(std::size_t(value));
        else
            return false;
    }
    return true;
}

bool fillTimes(RecurrenceRule &rule, icalrecurrencetype &read)
{
    for (short &second : read.by_second)
        if (second == 60)
            second = 59;
    return fill(rule.hours, read.by_hour, 0, 23) && fill(rule.minutes, read.by_minute, 0, 59) &&
           fill(rule.seconds, read.by_second, 0, 59);
}

bool fillWeekdays(RecurrenceRule &rule, const icalrecurrencetype &read)
{
    for (const short value : read.by_day) {
        if (value == ICAL_RECURRENCE_ARRAY_MAX)
            break;
        const int day = icalrecurrencetype_day_day_of_week(value);
        if (day < ICAL_SUNDAY_WEEKDAY || day > ICAL_SATURDAY_WEEKDAY)
            return false;
        rule.weekdays.push_back(
            {icalrecurrencetype_day_position(value), unsigned(day - ICAL_SUNDAY_WEEKDAY)});
    }
    return true;
}

bool fillPositions(RecurrenceRule &rule, const icalrecurrencetype &read)
{
    for (const short value : read.by_set_pos) {
        if (value == ICAL_RECURRENCE_ARRAY_MAX)
            break;
        if (value == 0)
            return false;
        rule.positions.push_back(value);
    }
    return true;
}

bool fillDays(RecurrenceRule &rule, const icalrecurrencetype &read)
{
    return fill(rule.months, read.by_month, 1, 12) && fill(rule.monthDays, read.by_month_day, 1, 31, 31) &&
           fill(rule.yearDays, read.by_year_day, 1, 366, 366) &&
           fill(rule.weeks, read.by_week_no, 1, 53, 53) && fillWeekdays(rule, read);
}

bool fillNumber(std::optional<std::int64_t> &number, std::string_view text)
{
    if (text.empty())
        return true;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    // More seconds than there are in ten thousand years make no difference.
    if (error != std::errc() || value < 1 || end != text.data() + text.size())
        return false;
    number = std::min(value, std::int64_t(400'000'000'000));
    return true;
}

/// libical keeps INTERVAL in 16 bits and takes an UNTIL that it can't read for none.
bool fillLimits(RecurrenceRule &rule, std::string_view text)
{
    std::optional<std::int64_t> interval;
    if (!fillNumber(interval, withoutBlanks(rulePart(text, "INTERVAL"))) ||
        !fillNumber(rule.count, withoutBlanks(rulePart(text, "COUNT"))))
        return false;
    rule.interval = interval.value_or(1);
    const std::string_view until = rulePart(text, "UNTIL");
    rule.until = parseTime(until);
    return until.empty() || rule.until;
}

} // namespace

std::string_view rulePart(std::string_view text, std::string_view name)
{
    std::string_view found;
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find(';'));
        const std::size_t equals = one.find('=');
        if (equals != one.npos && isName(withoutBlanks(one.substr(0, equals)), name))
            found = one.substr(equals + 1);
        text.remove_prefix(std::min(one.size() + 1, text.size()));
    }
    return found;
}

std::optional<RecurrenceRule> RecurrenceRule::parse(std::string_view text)
{
    text = withoutBlanks(text);
    if (text.size() > longestRule || text.find('\0') != text.npos)
        return std::nullopt;
    icalrecurrencetype read = icalrecurrencetype_from_string(std::string(text).c_str());
    // Ours to free, also when the rule is wrong.
    const std::unique_ptr<char, decltype(&std::free)> rscale(read.rscale, &std::free);
    if (read.freq == ICAL_NO_RECURRENCE)
        return std::nullopt;
    const std::string_view scale = rulePart(text, "RSCALE");
    if (rscale && (!isName(scale, "GREGORIAN") || read.skip != ICAL_SKIP_OMIT))
        return std::nullopt;
    RecurrenceRule rule;
    rule.frequency = Frequency(read.freq);
    if (read.week_start != ICAL_NO_WEEKDAY)
        rule.weekStart = unsigned(read.week_start - ICAL_SUNDAY_WEEKDAY);
    if (!fillLimits(rule, text) || !fillTimes(rule, read) || !fillDays(rule, read) ||
        !fillPositions(rule, read))
        return std::nullopt;
    return rule;
}

} // namespace mivora::ical
