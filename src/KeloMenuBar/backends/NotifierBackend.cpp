#include "KeloMenuBar/backends/NotifierBackend.h"

#include "KeloMenuBar/backends/DBusMenu.h"
#include "KeloMenuBar/backends/NotifierItem.h"

#include <utility>

namespace kelo {

NotifierBackend::NotifierBackend(const QDBusConnection &bus, const QString &id, std::function<Menu()> build,
                                 std::function<void(QPoint)> openMenu)
    : m_bus(bus), m_openMenu(std::move(openMenu)),
      m_item(new NotifierItem(
          bus, id, [this](QPoint point) { return this->openMenu(point); }, &m_itemObject)),
      m_host(bus)
{
    new DBusMenu(bus, std::move(build), &m_menuObject);
    m_bus.registerObject(QLatin1String(NotifierItem::objectPath), &m_itemObject);
    m_bus.registerObject(QLatin1String(NotifierItem::menuPath), &m_menuObject);
    connect(&m_host, &NotifierHost::appeared, this, &NotifierBackend::adopt);
    connect(&m_host, &NotifierHost::absent, this, [this] {
        m_hasWatcher = false;
        setHasHost(false);
    });
    connect(&m_host, &NotifierHost::drawnChanged, this, [this](bool isDrawn) {
        if (m_hasWatcher && isDrawn != m_hasHost)
            setHasHost(isDrawn);
    });
}

NotifierBackend::~NotifierBackend()
{
    m_bus.unregisterObject(QLatin1String(NotifierItem::menuPath));
    m_bus.unregisterObject(QLatin1String(NotifierItem::objectPath));
}

void NotifierBackend::show(const StatusItemState &state)
{
    m_state = state;
    publish();
}

void NotifierBackend::adopt(const StatusHost &host)
{
    m_hasWatcher = true;
    m_hostOpensMenu = opensRefusedMenu(host);
    m_presentation = presentationOverride().value_or(presentationFor(host));
    publish();
    m_host.registerItem();
    setHasHost(true);
}

void NotifierBackend::setHasHost(bool hasHost)
{
    m_hasHost = hasHost;
    Q_EMIT hostChanged(hasHost);
}

bool NotifierBackend::openMenu(QPoint point)
{
    if (m_hostOpensMenu)
        return false;
    m_openMenu(point);
    return true;
}

void NotifierBackend::publish()
{
    if (m_hasWatcher)
        m_item->setProperties(notifierProperties(m_state, m_presentation));
}

} // namespace kelo
