#include "Calendar/MemoryStore.h"

#include "Calendar/AccessMemory.h"
#include "MeetingTexts/MeetingTexts.h"

#include <algorithm>
#include <unordered_set>

namespace mivora {

namespace {

constexpr Seconds oneDay{86400};
/// Nobody needs more at a time, and what is loaded stays small.
constexpr Seconds longestInterval = 400 * oneDay;
/// Times that calendars can hold days for.
constexpr Timestamp earliestTime = timestampFromSeconds(-6e10);
constexpr Timestamp latestTime = timestampFromSeconds(2.5e11);

EventWindow windowFor(Timestamp from, Timestamp to, const QTimeZone &zone)
{
    return {startOfDay(from, zone, -1), startOfDay(to, zone, 3), zone};
}

/// The days between the end of what is asked for and the end of what is loaded are reloaded ahead of need.
bool isCovered(Timestamp from, Timestamp to, const EventWindow &window)
{
    return from >= window.from && to + oneDay <= window.to;
}

} // namespace

void MeetingList::change(MeetingChanges changes)
{
    std::unordered_set<const Meeting *> removed;
    for (const std::shared_ptr<const Meeting> &meeting : changes.removed)
        removed.insert(meeting.get());
    if (!removed.empty())
        std::erase_if(m_entries, [&](const Entry &entry) { return removed.contains(entry.meeting.get()); });
    for (std::shared_ptr<const Meeting> &meeting : changes.added)
        m_entries.push_back({meeting->start, meeting->end, {}, std::move(meeting)});
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry &left, const Entry &right) { return left.start < right.start; });
    Timestamp latest = Timestamp::min(); // the lowest there is
    for (Entry &entry : m_entries) {
        latest = std::max({latest, entry.start, entry.end});
        entry.latestEnd = latest;
    }
}

Meetings MeetingList::overlapping(Timestamp from, Timestamp to) const
{
    // Nothing before the first meeting with a late enough end is still running at `from`. One without length
    // counts when it starts at `from`, where its end is too.
    auto at = std::partition_point(m_entries.begin(), m_entries.end(),
                                   [from](const Entry &entry) { return entry.latestEnd < from; });
    Meetings found;
    for (; at != m_entries.end() && at->start < to; ++at) {
        if (overlaps(at->start, at->end, from, to))
            found.push_back(at->meeting);
    }
    return found;
}

EventWindow windowAround(Timestamp now, const QTimeZone &zone)
{
    return windowFor(now, now + oneDay, zone);
}

MemoryStore::MemoryStore(AccessMemory &access, EventWindow window, Loaders loaders, QObject *parent)
    : EventStore(parent), m_access(access), m_window(std::move(window))
{
    for (std::unique_ptr<CalendarLoader> &loader : loaders)
        m_parts.push_back({std::move(loader)});
    connect(&m_access, &AccessMemory::changed, this, &MemoryStore::start);
    connect(&m_access, &AccessMemory::changed, this, &EventStore::changed);
    // With the event loop: until then the program is about to show its item, which comes first.
    QMetaObject::invokeMethod(this, &MemoryStore::start, Qt::QueuedConnection);
}

MemoryStore::~MemoryStore()
{
    const std::lock_guard lock(m_inbox->mutex);
    m_inbox->store = nullptr;
}

void MemoryStore::start()
{
    if (!m_access.isAllowed() || std::exchange(m_inbox->store, this))
        return;
    for (Part &part : m_parts) {
        const auto deliver = [inbox = m_inbox, &part](StoreUpdate update) {
            const std::lock_guard lock(inbox->mutex);
            if (!inbox->store)
                return;
            inbox->updates.emplace_back(&part, std::move(update));
            if (inbox->updates.size() == 1)
                QMetaObject::invokeMethod(inbox->store, &MemoryStore::takeUpdates, Qt::QueuedConnection);
        };
        part.loader->start(m_window, deliver);
    }
}

void MemoryStore::takeUpdates()
{
    std::vector<std::pair<Part *, StoreUpdate>> updates;
    {
        const std::lock_guard lock(m_inbox->mutex);
        updates.swap(m_inbox->updates);
    }
    for (auto &[part, update] : updates)
        take(*part, std::move(update));
}

AuthorizationStatus MemoryStore::authorizationStatus() const
{
    if (!m_access.isAllowed())
        return AuthorizationStatus::notDetermined;
    const auto hasStatus = [this](AuthorizationStatus status) {
        return std::any_of(m_parts.begin(), m_parts.end(),
                           [status](const Part &part) { return part.status == status; });
    };
    for (const auto status : {AuthorizationStatus::fullAccess, AuthorizationStatus::restricted})
        if (hasStatus(status))
            return status;
    return AuthorizationStatus::denied;
}

void MemoryStore::requestFullAccess(AccessAnswer answer)
{
    m_access.allow();
    m_waiting.push_back(std::move(answer));
    QMetaObject::invokeMethod(this, &MemoryStore::answerRequests, Qt::QueuedConnection);
}

void MemoryStore::answerRequests()
{
    if (!isLoaded())
        return;
    for (const AccessAnswer &answer : std::exchange(m_waiting, {}))
        answer(authorizationStatus() == AuthorizationStatus::fullAccess);
}

std::vector<CalendarInfo> MemoryStore::calendars() const
{
    std::vector<CalendarInfo> all;
    for (const Part &part : m_parts)
        all.insert(all.end(), part.calendars.begin(), part.calendars.end());
    return all;
}

Meetings MemoryStore::meetings(Timestamp from, Timestamp to,
                               const std::optional<std::set<std::string>> &calendarIDs)
{
    extendWindow(from, to);
    Meetings found = m_meetings.overlapping(from, to);
    if (calendarIDs)
        std::erase_if(found,
                      [&](const auto &meeting) { return !calendarIDs->contains(meeting->calendarID); });
    return found;
}

bool MemoryStore::isLoaded() const
{
    return !m_access.isAllowed() ||
           std::all_of(m_parts.begin(), m_parts.end(), [](const Part &part) { return part.isLoaded; });
}

void MemoryStore::setTimeZone(const QTimeZone &zone)
{
    if (zone != m_window.zone)
        setWindow({m_window.from, m_window.to, zone});
}

void MemoryStore::extendWindow(Timestamp from, Timestamp to)
{
    from = std::clamp(from, earliestTime, latestTime);
    to = std::clamp(to, from, from + longestInterval);
    if (!m_asked || std::max(to, m_asked->second) - std::min(from, m_asked->first) > longestInterval)
        m_asked = {from, to};
    m_asked = {std::min(from, m_asked->first), std::max(to, m_asked->second)};
    if (isCovered(from, to, m_window))
        return;
    // All that was asked for lately stays loaded, else two questions in turn would have it loaded for ever.
    setWindow(windowFor(m_asked->first, m_asked->second, m_window.zone));
    m_asked = {from, to};
}

void MemoryStore::setWindow(EventWindow window)
{
    m_window = std::move(window);
    if (!m_inbox->store)
        return;
    for (const Part &part : m_parts)
        part.loader->setWindow(m_window);
}

void MemoryStore::take(Part &part, StoreUpdate update)
{
    const bool isChange = !update.changes.added.empty() || !update.changes.removed.empty() ||
                          update.calendars || update.status != part.status ||
                          update.isLoaded != part.isLoaded;
    part.status = update.status;
    part.isLoaded = update.isLoaded;
    if (update.calendars)
        part.calendars = std::move(*update.calendars);
    m_meetings.change(std::move(update.changes));
    answerRequests();
    if (isChange)
        Q_EMIT changed();
}

} // namespace mivora
