#include "ICalendar/ZoneDefinition.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>

namespace mivora::ical {

using namespace std::chrono;

namespace {

/// Enough for rules that began in 1601, as some programs write them.
constexpr std::int64_t workPerZone = 200'000;

/// A STANDARD or DAYLIGHT part.
struct Observance
{
    std::optional<TimeValue> start;
    std::optional<seconds> from;
    std::optional<seconds> to;
    std::vector<RecurrenceRule> rules;
    std::vector<LocalTime> extraTimes;
};

/// Reads "+0130" or "-013015".
std::optional<seconds> parseOffset(std::string_view text)
{
    text = withoutBlanks(text);
    if ((text.size() != 5 && text.size() != 7) || (text[0] != '+' && text[0] != '-'))
        return std::nullopt;
    int parts[3] = {};
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        int &part = parts[(i - 1) / 2];
        part = part * 10 + (text[i] - '0');
    }
    if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59)
        return std::nullopt;
    const seconds offset = hours(parts[0]) + minutes(parts[1]) + seconds(parts[2]);
    return text[0] == '-' ? -offset : offset;
}

void readExtraTimes(std::string_view list, std::vector<LocalTime> &times)
{
    while (!list.empty()) {
        const std::string_view one = list.substr(0, list.find(','));
        if (const auto time = parseTime(one))
            times.push_back(time->local);
        list.remove_prefix(std::min(one.size() + 1, list.size()));
    }
}

void readProperty(const ContentLine &line, Observance &observance)
{
    if (isName(line.name, "DTSTART")) {
        observance.start = parseTime(line.value);
    } else if (isName(line.name, "TZOFFSETFROM")) {
        observance.from = parseOffset(line.value);
    } else if (isName(line.name, "TZOFFSETTO")) {
        observance.to = parseOffset(line.value);
    } else if (isName(line.name, "RDATE")) {
        readExtraTimes(line.value, observance.extraTimes);
    } else if (isName(line.name, "RRULE")) {
        if (auto rule = RecurrenceRule::parse(line.value); rule && rule->frequency >= Frequency::daily)
            observance.rules.push_back(std::move(*rule));
    }
}

std::vector<Observance> readObservances(std::string_view definition)
{
    std::vector<Observance> observances;
    std::string buffer;
    while (!definition.empty()) {
        const ContentLine line = ContentLine::parse(unfolded(takeLine(definition), buffer));
        if (isName(line.name, "BEGIN"))
            observances.emplace_back();
        else if (!observances.empty())
            readProperty(line, observances.back());
    }
    return observances;
}

void addChanges(const Observance &observance, LocalTime horizon, WorkBudget &budget,
                std::vector<ListedZone::Change> &changes)
{
    const auto add = [&](LocalTime local) {
        changes.push_back({asUtc(local) - *observance.from, *observance.to});
    };
    add(observance.start->local);
    for (const LocalTime time : observance.extraTimes)
        add(time);
    for (const RecurrenceRule &rule : observance.rules) {
        const auto isPast = [&](LocalTime time) {
            if (!rule.until)
                return false;
            return rule.until->isUtc ? asUtc(time) - *observance.from > asUtc(rule.until->local)
                                     : time > rule.until->local;
        };
        expandRule(rule, *observance.start, {observance.start->local, horizon}, budget, isPast, add);
    }
}

} // namespace

std::string zoneProperty(std::string_view definition, std::string_view name)
{
    std::string buffer;
    while (!definition.empty()) {
        const std::string_view line = takeLine(definition);
        if (hasName(line, name))
            return std::string(withoutBlanks(ContentLine::parse(unfolded(line, buffer)).value));
        if (hasName(line, "BEGIN"))
            break;
    }
    return {};
}

std::unique_ptr<Zone> definedZone(std::string_view definition, LocalTime horizon, WorkBudget &all)
{
    std::vector<ListedZone::Change> changes;
    WorkBudget budget{std::clamp<std::int64_t>(all.left, 0, workPerZone)};
    const std::int64_t given = budget.left;
    std::optional<Observance> first;
    for (Observance &observance : readObservances(definition)) {
        if (!observance.start || !observance.from || !observance.to)
            continue;
        addChanges(observance, horizon, budget, changes);
        if (!first || observance.start->local < first->start->local)
            first = std::move(observance);
    }
    all.spend(given - budget.left);
    if (!first)
        return nullptr;
    std::stable_sort(changes.begin(), changes.end(),
                     [](const auto &a, const auto &b) { return a.at < b.at; });
    return std::make_unique<ListedZone>(*first->from, std::move(changes));
}

} // namespace mivora::ical
