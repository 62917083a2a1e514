#include "Calendar/folder/FolderStore.h"

#include "Calendar/LocalDay.h"
#include "Calendar/folder/FolderLoader.h"

#include <algorithm>

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

EventWindow windowAround(Timestamp now, const QTimeZone &zone)
{
    return windowFor({now, now + oneDay}, zone);
}

FolderStore::FolderStore(Setup setup, QObject *parent)
    : EventStore(parent), m_window(setup.window), m_isReadable(!setup.roots.empty())
{
    FolderLoader::Setup loading{std::move(setup.roots), m_window, std::move(setup.addresses)};
    m_loader = std::make_unique<FolderLoader>(std::move(loading), [this] {
        QMetaObject::invokeMethod(this, &FolderStore::receiveNews, Qt::QueuedConnection);
    });
}

FolderStore::~FolderStore() = default;

AuthorizationStatus FolderStore::authorizationStatus() const
{
    return m_isReadable ? AuthorizationStatus::fullAccess : AuthorizationStatus::denied;
}

void FolderStore::requestFullAccess(AccessAnswer answer)
{
    m_waiting.push_back(std::move(answer));
    if (m_isLoaded)
        QMetaObject::invokeMethod(this, &FolderStore::answerRequests, Qt::QueuedConnection);
}

StoreEvents FolderStore::events(Timestamp from, Timestamp to,
                                const std::optional<std::set<std::string>> &calendarIDs)
{
    wantInterval(from, to);
    StoreEvents found;
    for (const auto &[calendarID, occurrences] : m_occurrences) {
        if (!calendarIDs || calendarIDs->contains(calendarID))
            occurrences.appendOverlapping(from, to, found);
    }
    return found;
}

void FolderStore::setTimeZone(const QTimeZone &zone)
{
    if (zone == m_window.zone)
        return;
    m_window.zone = zone;
    m_loader->setWindow(m_window);
}

void FolderStore::rescan()
{
    m_loader->rescan();
}

void FolderStore::wantInterval(Timestamp from, Timestamp to)
{
    std::tie(from, to) = bounded(from, to);
    if (!m_asked || std::max(to, m_asked->second) - std::min(from, m_asked->first) > longestInterval)
        m_asked = {from, to};
    m_asked = {std::min(from, m_asked->first), std::max(to, m_asked->second)};
    if (isCovered(from, to, m_window))
        return;
    // All that was asked for lately stays loaded, else two questions in turn would have it loaded for ever.
    m_window = windowFor(*m_asked, m_window.zone);
    m_asked = {from, to};
    m_loader->setWindow(m_window);
}

void FolderStore::receiveNews()
{
    bool isChange = !m_isLoaded;
    for (LoaderNews &news : m_loader->takeNews()) {
        isChange = isChange || news.isChange || news.isReadable != m_isReadable;
        apply(std::move(news));
    }
    m_isLoaded = true;
    answerRequests();
    if (isChange)
        Q_EMIT changed();
}

void FolderStore::apply(LoaderNews news)
{
    m_isReadable = news.isReadable;
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
}

void FolderStore::answerRequests()
{
    for (const AccessAnswer &answer : std::exchange(m_waiting, {}))
        answer(m_isReadable);
}

} // namespace mivora
