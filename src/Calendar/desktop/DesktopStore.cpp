#include "Calendar/desktop/DesktopStore.h"

#include <utility>

namespace mivora {

DesktopStore::DesktopStore(Setup setup, QObject *parent)
    : EventStore(parent), m_service(setup.bus),
      // Nobody is told that access is missing before it is known.
      m_memory(std::move(setup.window), AuthorizationStatus::fullAccess),
      m_addresses(std::move(setup.addresses)), m_factory(std::move(setup.factory))
{
    connect(&m_service, &DesktopService::found, this, &DesktopStore::load);
    connect(&m_service, &DesktopService::missing, this, &DesktopStore::loadNothing);
}

DesktopStore::~DesktopStore() = default;

void DesktopStore::load(const QString &service)
{
    DesktopLoader::Setup loading{.service = service.toStdString(),
                                 .window = m_memory.window(),
                                 .addresses = m_addresses,
                                 .factory = m_factory};
    m_loader = std::make_unique<DesktopLoader>(std::move(loading), [this] {
        QMetaObject::invokeMethod(this, &DesktopStore::receiveNews, Qt::QueuedConnection);
    });
}

void DesktopStore::loadNothing()
{
    std::vector<LoaderNews> news(1);
    take(std::move(news));
}

void DesktopStore::requestFullAccess(AccessAnswer answer)
{
    m_waiting.push_back(std::move(answer));
    if (m_isLoaded)
        QMetaObject::invokeMethod(this, &DesktopStore::answerRequests, Qt::QueuedConnection);
}

StoreEvents DesktopStore::events(Timestamp from, Timestamp to,
                                 const std::optional<std::set<std::string>> &calendarIDs)
{
    if (m_memory.want(from, to) && m_loader)
        m_loader->setWindow(m_memory.window());
    return m_memory.events(from, to, calendarIDs);
}

void DesktopStore::setTimeZone(const QTimeZone &zone)
{
    if (m_memory.setTimeZone(zone) && m_loader)
        m_loader->setWindow(m_memory.window());
}

void DesktopStore::receiveNews()
{
    take(m_loader->takeNews());
}

void DesktopStore::take(std::vector<LoaderNews> news)
{
    bool isChange = false;
    for (LoaderNews &one : news) {
        isChange = isChange || one.isLoaded != m_isLoaded;
        m_isLoaded = one.isLoaded;
        isChange = m_memory.apply(std::move(one)) || isChange;
    }
    if (m_isLoaded)
        answerRequests();
    if (isChange)
        Q_EMIT changed();
}

void DesktopStore::answerRequests()
{
    for (const AccessAnswer &answer : std::exchange(m_waiting, {}))
        answer(m_memory.status() == AuthorizationStatus::fullAccess);
}

} // namespace mivora
