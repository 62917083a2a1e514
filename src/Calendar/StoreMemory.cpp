#include "Calendar/StoreMemory.h"

#include "MeetingTexts/LocalDay.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace mivora {

namespace {

constexpr Seconds oneDay{86400};
/// Nobody needs more at a time, and what is loaded stays small.
constexpr Seconds longestInterval = 400 * oneDay;
/// Times that calendars can hold days for.
constexpr Timestamp earliestTime = timestampFromSeconds(-6e10);
constexpr Timestamp latestTime = timestampFromSeconds(2.5e11);

std::pair<Timestamp, Timestamp> bounded(Timestamp from, Timestamp to)
{
    from = std::clamp(from, earliestTime, latestTime);
    return {from, std::clamp(to, from, from + longestInterval)};
}

EventWindow windowFor(const std::pair<Timestamp, Timestamp> &asked, const QTimeZone &zone)
{
    return {startOfDay(asked.first, zone, -1), startOfDay(asked.second, zone, 3), zone};
}

/// The days between the end of what is asked for and the end of what is loaded are reloaded ahead of need.
bool isCovered(Timestamp from, Timestamp to, const EventWindow &window)
{
    return from >= window.from && to + oneDay <= window.to;
}

} // namespace

void EventChanges::append(EventChanges other)
{
    std::move(other.removed.begin(), other.removed.end(), std::back_inserter(removed));
    std::move(other.added.begin(), other.added.end(), std::back_inserter(added));
}

void keepUnchanged(StoreEvents old, StoreEvents &events, EventChanges &changes)
{
    std::multimap<Timestamp, std::shared_ptr<const StoreEvent>> known;
    for (std::shared_ptr<const StoreEvent> &event : old)
        known.emplace(event->start, std::move(event));
    for (std::shared_ptr<const StoreEvent> &event : events) {
        const auto [first, last] = known.equal_range(event->start);
        const auto same = std::find_if(first, last, [&](const auto &k) { return *k.second == *event; });
        if (same == last) {
            changes.added.push_back(event);
        } else {
            event = std::move(same->second);
            known.erase(same);
        }
    }
    for (auto &[start, event] : known)
        changes.removed.push_back(std::move(event));
}

EventWindow windowAround(Timestamp now, const QTimeZone &zone)
{
    return windowFor({now, now + oneDay}, zone);
}

StoreEvents StoreMemory::events(Timestamp from, Timestamp to,
                                const std::optional<std::set<std::string>> &calendarIDs) const
{
    StoreEvents found;
    for (const auto &[calendarID, occurrences] : m_occurrences) {
        if (!calendarIDs || calendarIDs->contains(calendarID))
            occurrences.appendOverlapping(from, to, found);
    }
    return found;
}

bool StoreMemory::want(Timestamp from, Timestamp to)
{
    std::tie(from, to) = bounded(from, to);
    if (!m_asked || std::max(to, m_asked->second) - std::min(from, m_asked->first) > longestInterval)
        m_asked = {from, to};
    m_asked = {std::min(from, m_asked->first), std::max(to, m_asked->second)};
    if (isCovered(from, to, m_window))
        return false;
    // All that was asked for lately stays loaded, else two questions in turn would have it loaded for ever.
    m_window = windowFor(*m_asked, m_window.zone);
    m_asked = {from, to};
    return true;
}

bool StoreMemory::setTimeZone(const QTimeZone &zone)
{
    if (zone == m_window.zone)
        return false;
    m_window.zone = zone;
    return true;
}

bool StoreMemory::apply(LoaderNews news)
{
    const bool isChange = news.isChange || news.status != m_status;
    m_status = news.status;
    if (news.calendars)
        m_calendars = std::move(*news.calendars);
    std::unordered_set<const StoreEvent *> removed;
    std::map<std::string, StoreEvents> added;
    for (const std::shared_ptr<const StoreEvent> &event : news.changes.removed) {
        removed.insert(event.get());
        added.try_emplace(*event->calendarID);
    }
    for (std::shared_ptr<const StoreEvent> &event : news.changes.added) {
        StoreEvents &ofCalendar = added[*event->calendarID];
        ofCalendar.push_back(std::move(event));
    }
    for (auto &[calendarID, events] : added) {
        OccurrenceList &occurrences = m_occurrences[calendarID];
        occurrences.change(removed, std::move(events));
        if (occurrences.isEmpty())
            m_occurrences.erase(calendarID);
    }
    return isChange;
}

} // namespace mivora
