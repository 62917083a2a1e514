#include "ICalendar/Series.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace mivora::ical {

using namespace std::chrono;

namespace {

constexpr std::int64_t workPerRule = 500'000;
constexpr std::int64_t leastWorkPerRule = 2'000;
/// Finding the offset of a zone costs as much as testing so many days.
constexpr std::int64_t workPerTime = 20;
constexpr std::size_t mostTimesPerSeries = 10'000;

/// Whether `left` is a later version than `right` of the same component (RFC 5546, 2.1.5).
bool isNewer(const EventTimes &left, const EventTimes &right)
{
    // The override of one occurrence is more to the point than one that goes on.
    const auto key = [](const EventTimes &event) {
        return std::tuple(event.sequence, event.stamp, !event.isThisAndFuture, event.text);
    };
    return key(left) > key(right);
}

/// `time` in whole seconds, as far as iCalendar can write it.
UtcTime nearest(Timestamp time)
{
    return UtcTime(seconds(std::int64_t(std::clamp(time.time_since_epoch().count(), -62.2e9, 253.5e9))));
}

/// The zone in which `moment` is meant, `floating` when it names none.
const Zone &zoneOf(const Moment &moment, const Zone &floating)
{
    return moment.zone ? *moment.zone : floating;
}

// How long an occurrence lasts: with DTEND exactly as long as the first, with DURATION as many calendar days
// (RFC 5545, 3.8.5.3). Whole days are always calendar days. Never negative.

DurationValue notNegative(DurationValue length)
{
    return length.days + length.seconds < seconds(0) ? DurationValue() : length;
}

DurationValue between(const Moment &start, const Moment &end, const Zone &floating)
{
    const UtcTime from = zoneOf(start, floating).toUtc(start.value.local);
    return notNegative({days(0), zoneOf(end, zoneOf(start, floating)).toUtc(end.value.local) - from});
}

DurationValue lengthOf(const EventTimes &event, const Zone &floating)
{
    const DurationValue duration = event.duration.value_or(DurationValue());
    if (event.start->value.isDate) {
        const days length = event.end ? ceil<days>(event.end->value.local - event.start->value.local)
                                      : duration.days + ceil<days>(duration.seconds);
        return {std::max(length, days(1)), seconds(0)};
    }
    return event.end ? between(*event.start, *event.end, floating) : notNegative(duration);
}

/// When an occurrence ends that starts when a clock in `zone` shows `start`.
UtcTime endAfter(LocalTime start, const DurationValue &length, const Zone &zone)
{
    const UtcTime begin = zone.toUtc(start);
    if (length.days == days(0))
        return begin + length.seconds;
    return std::max(begin, zone.toUtc(start + length.days) + length.seconds);
}

/// No occurrence lasts longer: the days themselves may be a little longer than usual.
seconds longest(const DurationValue &length)
{
    return length.days == days(0) ? length.seconds : length.days + length.seconds + days(2);
}

/// One time of a series, before anything overrides it.
struct Instance
{
    UtcTime time{};
    LocalTime local{};
    std::optional<DurationValue> ownLength;
};

/// A component that overrides its occurrence and all later ones.
struct Change
{
    UtcTime from{};
    const EventTimes *event = nullptr;
    seconds shift{};
};

/// The expansion of one series.
class SeriesWalk
{
public:
    SeriesWalk(std::span<const EventTimes> components, SeriesContext context)
        : m_context(context), m_floating(context.floating)
    {
        for (const EventTimes &event : components) {
            if (event.recurrenceID)
                m_overrides.push_back(&event);
            else if (event.start && (!m_master || isNewer(event, *m_master)))
                m_master = &event;
        }
        keepNewestOverrides();
    }

    std::vector<SeriesTime> run()
    {
        if (m_master && m_master->isCancelled)
            return {};
        for (const EventTimes *override : m_overrides)
            if (override->start && !override->isCancelled)
                emit(*override, override->start->value.local, lengthOf(*override, m_floating));
        if (m_master)
            expandMaster();
        return std::move(m_occurrences);
    }

private:
    const Zone &zoneOfSeries() const { return zoneOf(*m_master->start, m_floating); }

    /// By what two overrides of the same occurrence are known.
    UtcTime identity(const EventTimes &override) const
    {
        const Zone &zone = m_master ? zoneOfSeries() : m_floating;
        const Moment &moment = *override.recurrenceID;
        if (m_master && m_master->start->value.isDate)
            return zone.toUtc(floor<days>(moment.value.local));
        return zoneOf(moment, zone).toUtc(moment.value.local);
    }

    void keepNewestOverrides()
    {
        std::vector<std::pair<UtcTime, const EventTimes *>> byTime;
        for (const EventTimes *override : m_overrides)
            byTime.emplace_back(identity(*override), override);
        std::sort(byTime.begin(), byTime.end(), [](const auto &left, const auto &right) {
            return left.first != right.first ? left.first < right.first
                                             : isNewer(*left.second, *right.second);
        });
        m_overrides.clear();
        std::optional<UtcTime> last, lastRange;
        for (const auto &[time, override] : byTime) {
            if (std::exchange(last, time) != time)
                m_overrides.push_back(override);
            // One of a single occurrence leaves those after it as they are.
            if (m_master && override->isThisAndFuture && std::exchange(lastRange, time) != time)
                m_changes.push_back({time, override, shiftOf(*override)});
        }
    }

    void expandMaster()
    {
        collectNames();
        const std::vector<Instance> instances = collectInstances();
        const DurationValue length = lengthOf(*m_master, m_floating);
        for (const Instance &instance : instances) {
            if (isSkipped(instance))
                continue;
            const Change *change = changeAt(instance.time);
            if (!change)
                emit(*m_master, instance.local, instance.ownLength.value_or(length));
            else if (change->event->start && !change->event->isCancelled)
                emitChanged(*change, instance);
        }
    }

    void collectNames()
    {
        for (const Moment &excluded : m_master->excludedTimes)
            skip(excluded);
        for (const EventTimes *override : m_overrides)
            skip(*override->recurrenceID);
        std::sort(m_skippedDays.begin(), m_skippedDays.end());
        std::sort(m_skippedTimes.begin(), m_skippedTimes.end());
    }

    /// Leaves out what `moment` names: one time exactly, or a day.
    void skip(const Moment &moment)
    {
        if (m_master->start->value.isDate || moment.value.isDate)
            m_skippedDays.push_back(floor<days>(moment.value.local));
        else
            m_skippedTimes.push_back(zoneOf(moment, zoneOfSeries()).toUtc(moment.value.local));
    }

    bool isSkipped(const Instance &instance) const
    {
        return std::binary_search(m_skippedTimes.begin(), m_skippedTimes.end(), instance.time) ||
               std::binary_search(m_skippedDays.begin(), m_skippedDays.end(), floor<days>(instance.local));
    }

    /// By how much the clock shows another time after `override` than it did before.
    seconds shiftOf(const EventTimes &override) const
    {
        if (!override.start)
            return seconds(0);
        const Zone &zone = zoneOf(*override.start, m_floating);
        return override.start->value.local - localIn(zone, override, identity(override));
    }

    /// What a clock of `override`'s kind shows for the occurrence at `time` of the series.
    LocalTime localIn(const Zone &zone, const EventTimes &override, UtcTime time) const
    {
        const bool keepsClock = m_master->start->value.isDate || override.start->value.isDate;
        return keepsClock ? zoneOfSeries().toLocal(time) : zone.toLocal(time);
    }

    const Change *changeAt(UtcTime time) const
    {
        const auto next = std::upper_bound(m_changes.begin(), m_changes.end(), time,
                                           [](UtcTime t, const Change &change) { return t < change.from; });
        return next == m_changes.begin() ? nullptr : &*std::prev(next);
    }

    void emitChanged(const Change &change, const Instance &instance)
    {
        const EventTimes &event = *change.event;
        LocalTime local = localIn(zoneOf(*event.start, m_floating), event, instance.time) + change.shift;
        if (event.start->value.isDate)
            local = floor<days>(local);
        emit(event, local, lengthOf(event, m_floating));
    }

    /// Where times of the master have to lie for their occurrences to reach into the window.
    LocalSpan wantedSpan() const
    {
        seconds longestLength = longest(lengthOf(*m_master, m_floating));
        seconds latestShift(0), earliestShift(0);
        for (const Change &change : m_changes) {
            if (change.event->start)
                longestLength = std::max(longestLength, longest(lengthOf(*change.event, m_floating)));
            latestShift = std::max(latestShift, change.shift);
            earliestShift = std::min(earliestShift, change.shift);
        }
        const UtcTime from = nearest(m_context.window.from - longestLength),
                      to = nearest(m_context.window.to);
        const Zone &zone = zoneOfSeries();
        return {zone.toLocal(from) - slackAt(from) - latestShift,
                zone.toLocal(to) + slackAt(to) - earliestShift};
    }

    /// How far the clock may be off around `time:` by the changes of the zone, or by those of an override.
    seconds slackAt(UtcTime time) const
    {
        const Zone &zone = zoneOfSeries();
        const seconds step = zone.offsetAt(time + days(2)) - zone.offsetAt(time - days(2));
        return hours(3) + (step < seconds(0) ? -step : step) + (m_changes.empty() ? days(0) : days(2));
    }

    std::vector<Instance> collectInstances()
    {
        std::vector<Instance> instances;
        const Moment &start = *m_master->start;
        addInstance(instances, start.value.local, std::nullopt);
        for (const ExtraTime &extra : m_master->extraTimes)
            addExtraTime(instances, extra);
        for (const RecurrenceRule &rule : m_master->rules)
            addRule(instances, rule);
        std::stable_sort(instances.begin(), instances.end(), [](const Instance &left, const Instance &right) {
            return std::pair(left.time, !left.ownLength) < std::pair(right.time, !right.ownLength);
        });
        const auto same = [](const Instance &left, const Instance &right) { return left.time == right.time; };
        instances.erase(std::unique(instances.begin(), instances.end(), same), instances.end());
        return instances;
    }

    void addInstance(std::vector<Instance> &instances, LocalTime local, std::optional<DurationValue> length)
    {
        instances.push_back({zoneOfSeries().toUtc(local), local, length});
    }

    void addExtraTime(std::vector<Instance> &instances, const ExtraTime &extra)
    {
        const TimeValue &start = m_master->start->value;
        LocalTime local = extra.start.value.local;
        if (start.isDate)
            local = floor<days>(local);
        else if (extra.start.value.isDate)
            local += start.local - floor<days>(start.local);
        else
            local = zoneOfSeries().toLocal(zoneOf(extra.start, zoneOfSeries()).toUtc(local));
        std::optional<DurationValue> length;
        if (!start.isDate && (extra.end || extra.duration))
            length =
                extra.end ? between(extra.start, *extra.end, zoneOfSeries()) : notNegative(*extra.duration);
        addInstance(instances, local, length);
    }

    void addRule(std::vector<Instance> &instances, const RecurrenceRule &rule)
    {
        const TimeValue &start = m_master->start->value;
        if (start.isDate && rule.frequency < Frequency::daily) {
            m_context.problems.add(m_master->text.data(), "Whole days can't recur by parts of days");
            return;
        }
        WorkBudget budget{std::clamp(m_context.budget.left, leastWorkPerRule, workPerRule)};
        const std::int64_t given = budget.left;
        const std::size_t most = instances.size() + mostTimesPerSeries;
        const Expansion result = expandRule(rule, start, wantedSpan(), budget, [&](LocalTime time) {
            if (isAfterUntil(rule, time) || instances.size() >= most)
                return false;
            budget.spend(workPerTime);
            addInstance(instances, time, std::nullopt);
            return true;
        });
        m_context.budget.spend(given - budget.left);
        if (result == Expansion::cutShort || instances.size() >= most)
            m_context.problems.add(m_master->text.data(),
                                   "The event recurs too often; a part of it is left out");
    }

    bool isAfterUntil(const RecurrenceRule &rule, LocalTime time) const
    {
        if (!rule.until)
            return false;
        const TimeValue &until = *rule.until;
        if (until.isDate || m_master->start->value.isDate)
            return floor<days>(time) > floor<days>(until.local);
        return until.isUtc ? zoneOfSeries().toUtc(time) > asUtc(until.local) : time > until.local;
    }

    void emit(const EventTimes &event, LocalTime local, const DurationValue &length)
    {
        const Zone &zone = zoneOf(*event.start, m_floating);
        const SeriesTime occurrence{&event, zone.toUtc(local), endAfter(local, length, zone)};
        const Timestamp from = m_context.window.from, to = m_context.window.to;
        if (occurrence.start < to &&
            (occurrence.end > from || (occurrence.end == occurrence.start && occurrence.start >= from)))
            m_occurrences.push_back(occurrence);
    }

    SeriesContext m_context;
    const Zone &m_floating;
    const EventTimes *m_master = nullptr;
    std::vector<const EventTimes *> m_overrides;
    std::vector<local_days> m_skippedDays;
    std::vector<UtcTime> m_skippedTimes;
    /// In order of time.
    std::vector<Change> m_changes;
    std::vector<SeriesTime> m_occurrences;
};

} // namespace

std::vector<SeriesTime> expandSeries(std::span<const EventTimes> components, SeriesContext context)
{
    return SeriesWalk(components, context).run();
}

} // namespace mivora::ical
