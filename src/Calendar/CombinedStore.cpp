#include "Calendar/CombinedStore.h"

#include "Calendar/AccessMemory.h"

#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <unordered_set>

namespace mivora {

namespace {

const std::string &nameOf(const std::string &id, const std::unordered_map<std::string, std::string> &names)
{
    const auto found = names.find(id);
    return found == names.end() ? id : found->second;
}

} // namespace

CombinedStore::CombinedStore(std::vector<Part> parts, AccessMemory &memory, QObject *parent)
    : EventStore(parent), m_parts(std::move(parts)), m_memory(memory)
{
    for (const Part &part : m_parts)
        connect(part.store.get(), &EventStore::changed, this, &CombinedStore::handleChange);
    connect(&m_memory, &AccessMemory::changed, this, &EventStore::changed);
    nameCalendars();
}

AuthorizationStatus CombinedStore::authorizationStatus() const
{
    if (!m_memory.isAllowed())
        return AuthorizationStatus::notDetermined;
    AuthorizationStatus status = AuthorizationStatus::denied;
    for (const Part &part : m_parts) {
        const AuthorizationStatus own = part.store->authorizationStatus();
        if (own == AuthorizationStatus::fullAccess)
            return own;
        if (own == AuthorizationStatus::restricted)
            status = own;
    }
    return status;
}

void CombinedStore::requestFullAccess(AccessAnswer answer)
{
    m_memory.allow();

    struct Request
    {
        std::size_t unanswered = 0;
        AccessAnswer answer;
    };

    const auto request = std::make_shared<Request>(Request{m_parts.size(), std::move(answer)});
    const auto finish = [self = QPointer(this), request] {
        if (self)
            request->answer(self->authorizationStatus() == AuthorizationStatus::fullAccess);
    };
    if (m_parts.empty())
        QTimer::singleShot(0, this, finish);
    for (const Part &part : m_parts) {
        part.store->requestFullAccess([request, finish](bool) {
            if (--request->unanswered == 0)
                finish();
        });
    }
}

std::vector<StoreCalendar> CombinedStore::calendars() const
{
    std::vector<StoreCalendar> all;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        for (StoreCalendar &calendar : m_parts[i].store->calendars()) {
            calendar.id = nameOf(calendar.id, m_names[i]);
            all.push_back(std::move(calendar));
        }
    }
    return all;
}

StoreEvents CombinedStore::events(Timestamp from, Timestamp to,
                                  const std::optional<std::set<std::string>> &calendarIDs)
{
    StoreEvents all;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        const auto wanted = calendarIDs ? ownIDs(i, *calendarIDs) : std::nullopt;
        StoreEvents events = m_parts[i].store->events(from, to, wanted);
        if (!m_names[i].empty()) {
            for (std::shared_ptr<const StoreEvent> &event : events)
                event = renamed(i, event);
        }
        all.insert(all.end(), std::make_move_iterator(events.begin()), std::make_move_iterator(events.end()));
    }
    return all;
}

bool CombinedStore::isLoaded() const
{
    return std::all_of(m_parts.begin(), m_parts.end(),
                       [](const Part &part) { return part.store->isLoaded(); });
}

void CombinedStore::setTimeZone(const QTimeZone &zone)
{
    for (const Part &part : m_parts)
        part.store->setTimeZone(zone);
}

void CombinedStore::handleChange()
{
    nameCalendars();
    Q_EMIT changed();
}

void CombinedStore::nameCalendars()
{
    m_renamed.clear();
    m_names.assign(m_parts.size(), {});
    std::unordered_set<std::string> taken;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        for (const StoreCalendar &calendar : m_parts[i].store->calendars()) {
            std::string id = calendar.id;
            while (!taken.insert(id).second)
                id.insert(0, m_parts[i].name + ':');
            if (id != calendar.id)
                m_names[i].emplace(calendar.id, std::move(id));
        }
    }
}

std::optional<std::set<std::string>> CombinedStore::ownIDs(std::size_t part,
                                                           const std::set<std::string> &ids) const
{
    std::set<std::string> own;
    for (const StoreCalendar &calendar : m_parts[part].store->calendars()) {
        if (ids.contains(nameOf(calendar.id, m_names[part])))
            own.insert(calendar.id);
    }
    return own;
}

std::shared_ptr<const StoreEvent> CombinedStore::renamed(std::size_t part,
                                                         const std::shared_ptr<const StoreEvent> &event)
{
    if (!event->calendarID)
        return event;
    const auto name = m_names[part].find(*event->calendarID);
    if (name == m_names[part].end())
        return event;
    const auto [known, isNew] = m_renamed.try_emplace(event.get());
    if (isNew) {
        auto copy = std::make_shared<StoreEvent>(*event);
        copy->calendarID = name->second;
        known->second = {event, std::move(copy)};
    }
    return known->second.renamed;
}

} // namespace mivora
