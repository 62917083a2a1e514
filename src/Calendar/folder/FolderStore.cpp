#include "Calendar/folder/FolderStore.h"

#include "Calendar/folder/FolderLoader.h"

namespace mivora {

FolderStore::FolderStore(Setup setup, QObject *parent)
    : EventStore(parent), m_memory(setup.window, setup.roots.empty() ? AuthorizationStatus::denied
                                                                     : AuthorizationStatus::fullAccess)
{
    FolderLoader::Setup loading{std::move(setup.roots), std::move(setup.window), std::move(setup.addresses)};
    m_loader = std::make_unique<FolderLoader>(std::move(loading), [this] {
        QMetaObject::invokeMethod(this, &FolderStore::receiveNews, Qt::QueuedConnection);
    });
    // With the event loop: until then the program is about to show its item, which comes first.
    QMetaObject::invokeMethod(
        this, [this] { m_loader->start(); }, Qt::QueuedConnection);
}

FolderStore::~FolderStore() = default;

void FolderStore::requestFullAccess(AccessAnswer answer)
{
    m_waiting.push_back(std::move(answer));
    if (m_isLoaded)
        QMetaObject::invokeMethod(this, &FolderStore::answerRequests, Qt::QueuedConnection);
}

StoreEvents FolderStore::events(Timestamp from, Timestamp to,
                                const std::optional<std::set<std::string>> &calendarIDs)
{
    if (m_memory.want(from, to))
        m_loader->setWindow(m_memory.window());
    return m_memory.events(from, to, calendarIDs);
}

void FolderStore::setTimeZone(const QTimeZone &zone)
{
    if (m_memory.setTimeZone(zone))
        m_loader->setWindow(m_memory.window());
}

void FolderStore::rescan()
{
    m_loader->rescan();
}

void FolderStore::receiveNews()
{
    bool isChange = !m_isLoaded;
    for (LoaderNews &news : m_loader->takeNews())
        isChange = m_memory.apply(std::move(news)) || isChange;
    m_isLoaded = true;
    answerRequests();
    if (isChange)
        Q_EMIT changed();
}

void FolderStore::answerRequests()
{
    for (const AccessAnswer &answer : std::exchange(m_waiting, {}))
        answer(m_memory.status() == AuthorizationStatus::fullAccess);
}

} // namespace mivora
