#include "KeloMenuBar/backends/NotifierBackend.h"

#include "KeloMenuBar/backends/DBusMenu.h"
#include "KeloMenuBar/backends/NotifierItem.h"
#include "Platform/linux/BusCall.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace kelo {

using mivora::busCall;
using mivora::callBus;

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

QDBusMessage watcherCall(const QString &owner, const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(owner, watcherPath, interface, method);
}

// Empty if the process is not visible from here, as from within a sandbox.
QString processName(uint pid)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(pid));
    return pid != 0 && file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()).trimmed()
                                                      : QString();
}

} // namespace

NotifierBackend::NotifierBackend(const QDBusConnection &bus, const QString &id, const StatusItemState &state,
                                 std::function<Menu()> build, std::function<void(QPoint)> openMenu)
    : m_bus(bus), m_watcher(watcherName, bus, QDBusServiceWatcher::WatchForOwnerChange), m_state(state),
      m_openMenu(std::move(openMenu)), m_icon(bus, id, m_openMenu),
      m_item(new NotifierItem(
          bus, id, [this](QPoint point) { return this->openMenu(point); }, &m_itemObject))
{
    new DBusMenu(
        bus, std::move(build), [this] { return m_item->takeActivationToken(); }, &m_menuObject);
    m_bus.registerObject(QLatin1String(NotifierItem::objectPath), &m_itemObject);
    m_bus.registerObject(QLatin1String(NotifierItem::menuPath), &m_menuObject);
    m_watcher.addWatchedService(QStringLiteral("org.x.StatusIconMonitor*"));
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &name, const QString &, const QString &owner) {
                name == watcherName ? setOwner(owner) : followHosts();
            });
    // From any sender: with a name, Qt would wait for its owner here.
    for (const char *change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.connect({}, watcherPath, watcherName, QLatin1String(change), this, SLOT(followHosts()));
    // The connection's own word: a bus that is gone tells of nobody's end.
    m_bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(setOwner()));
    callBus<QString>(m_bus, busCall(QStringLiteral("GetNameOwner")) << watcherName, this,
                     [this](const auto &owner) { setOwner(owner.isValid() ? owner.value() : QString()); });
}

NotifierBackend::~NotifierBackend()
{
    m_bus.unregisterObject(QLatin1String(NotifierItem::menuPath));
    m_bus.unregisterObject(QLatin1String(NotifierItem::objectPath));
}

void NotifierBackend::update()
{
    if (!m_presentation)
        return;
    if (m_icon.isClaimed())
        m_icon.show(m_state);
    NotifierProperties properties = notifierProperties(m_state, *m_presentation);
    // There is no way back from a registration.
    if (m_isIcon)
        properties.status = QStringLiteral("Passive");
    if (readsMarkup(m_host)) {
        properties.title = properties.title.toHtmlEscaped();
        properties.toolTip = properties.toolTip.toHtmlEscaped();
    }
    m_item->setProperties(properties);
}

void NotifierBackend::setOwner(const QString &owner)
{
    if (!owner.isEmpty() && owner == m_owner)
        return;
    m_owner = owner;
    m_presentation.reset();
    m_isRegistered = false;
    m_host = {.desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP")};
    owner.isEmpty() ? askHosts() : askProcess();
}

void NotifierBackend::askProcess()
{
    callBus<uint>(m_bus, busCall(QStringLiteral("GetConnectionUnixProcessID")) << m_owner, this,
                  [this, owner = m_owner](const auto &pid) {
                      if (owner != m_owner)
                          return;
                      m_host.process = processName(pid.isValid() ? pid.value() : 0);
                      askHosts();
                  });
}

// Watchers tell of no host's name, but each has one on the bus, with the number of its process.
void NotifierBackend::askHosts()
{
    const auto answered = [this, owner = m_owner](const auto &names) {
        if (owner == m_owner)
            takeHosts(names.isValid() ? names.value() : QStringList());
    };
    callBus<QStringList>(m_bus, busCall(QStringLiteral("ListNames")), this, answered);
}

void NotifierBackend::takeHosts(const QStringList &names)
{
    m_host.hasAyatanaIndicator = names.contains(QLatin1String("org.ayatana.indicator.application"));
    m_host.others.clear();
    static const QRegularExpression hostName(QStringLiteral("\\.StatusNotifierHost-(\\d+)"));
    for (const QString &name : names) {
        if (const auto match = hostName.match(name); match.hasMatch())
            m_host.others << processName(match.captured(1).toUInt());
    }
    m_presentation = presentationOverride().value_or(presentationFor(m_host));
    const bool wantsIcon = NotifierBackend::wantsIcon(names);
    const bool isAsking = wantsIcon && !m_icon.isClaimed();
    if (isAsking)
        m_icon.claim([this] { askHosts(); });
    m_isIcon = wantsIcon && m_icon.isNamed();
    update();
    if (isAsking)
        return;
    if (m_isIcon || m_owner.isEmpty())
        setHasHost(m_isIcon);
    else if (!m_isRegistered)
        registerItem();
    else
        askDrawn();
}

// A panel's monitor is there, and the user doesn't want a picture.
bool NotifierBackend::wantsIcon(const QStringList &names)
{
    return presentationOverride().value_or(Presentation::Label) == Presentation::Label &&
           std::ranges::any_of(names, &StatusIcon::isMonitor);
}

void NotifierBackend::registerItem()
{
    m_isRegistered = true;
    m_item->expectHost();
    // The unique name: hosts take it as well as a name of the form org.kde.StatusNotifierItem-…, which a
    // sandbox would not let us have. A host that does not answer just shows nothing.
    m_bus.asyncCall(watcherCall(m_owner, watcherName, QStringLiteral("RegisterStatusNotifierItem"))
                    << m_bus.baseService());
    setHasHost(true);
    askDrawn();
}

void NotifierBackend::followHosts()
{
    if (m_presentation)
        askHosts();
}

// The watcher may be a program that only keeps the list of items.
void NotifierBackend::askDrawn()
{
    const auto call =
        watcherCall(m_owner, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"))
        << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    callBus<QDBusVariant>(m_bus, call, this, [this, owner = m_owner](const auto &answer) {
        // Watchers that leave the property out draw the items themselves.
        const bool isDrawn = !answer.isValid() || answer.value().variant() != QVariant(false);
        if (owner == m_owner && isDrawn != m_hasHost)
            setHasHost(isDrawn);
    });
}

void NotifierBackend::setHasHost(bool hasHost)
{
    m_hasHost = hasHost;
    Q_EMIT hostChanged(hasHost);
}

bool NotifierBackend::openMenu(QPoint point)
{
    if (opensRefusedMenu(m_host))
        return false;
    m_openMenu(point);
    return true;
}

} // namespace kelo
