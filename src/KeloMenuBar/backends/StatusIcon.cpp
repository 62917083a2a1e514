#include "KeloMenuBar/backends/StatusIcon.h"

#include "Platform/Activation.h"
#include "Platform/linux/BusCall.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <utility>

namespace kelo {

namespace {

const QString interface = QStringLiteral("org.x.StatusIcon");
const QString managerInterface = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const QString managerPath = QStringLiteral("/org/x/StatusIcon");
const QString iconPath = QStringLiteral("/org/x/StatusIcon/Icon");

// What GetManagedObjects answers, a{oa{sa{sv}}}.
using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

constexpr int iconHeight = 44;

// A name where every host looks, else a file. Of files only those are drawn whose name doesn't promise that
// they may be recoloured.
QString iconFor(const StatusItemState &state, const NotifierProperties &properties)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (properties.iconThemePath.isEmpty() || folder.isEmpty())
        return properties.iconName;
    const QDir icons(folder + QStringLiteral("/app.kelo.Mivora"));
    const QString file = icons.filePath(
        state.icon + (state.isUrgent ? QStringLiteral("-urgent.png") : QStringLiteral(".png")));
    const StatusPicture picture{.symbol = state.icon, .isUrgent = state.isUrgent};
    return QFile::exists(file) || (icons.mkpath(QStringLiteral(".")) && picture.draw(iconHeight).save(file))
               ? file
               : properties.iconName;
}

} // namespace

bool StatusIcon::isMonitor(const QString &name)
{
    return name.startsWith(QLatin1String("org.x.StatusIconMonitor."));
}

StatusIcon::StatusIcon(const QDBusConnection &bus, const QString &id, std::function<void(QPoint)> openMenu)
    : m_bus(bus), m_id(id), m_openMenu(std::move(openMenu))
{
}

StatusIcon::~StatusIcon()
{
    m_bus.unregisterObject(managerPath, QDBusConnection::UnregisterTree);
}

void StatusIcon::claim(std::function<void()> answered)
{
    qDBusRegisterMetaType<Interfaces>();
    qDBusRegisterMetaType<Objects>();
    m_claim = Claim::asked;
    m_bus.registerVirtualObject(managerPath, this, QDBusConnection::SubPath);
    constexpr uint doNotQueue = 4;
    const QDBusMessage call = mivora::busCall(QStringLiteral("RequestName"))
                              << QString(interface + u'.' + m_id.section(u'.', -1)) << doNotQueue;
    mivora::callBus<uint>(m_bus, call, this, [this, answered = std::move(answered)](const auto &reply) {
        constexpr uint isOwner = 1;
        if (reply.isValid() && reply.value() == isOwner)
            m_claim = Claim::granted;
        answered();
    });
}

void StatusIcon::show(const StatusItemState &state)
{
    const NotifierProperties now = notifierProperties(state, Presentation::Label);
    // Tool tips are read as Pango markup, labels are not.
    const QVariantMap before =
        std::exchange(m_properties, {{QStringLiteral("Name"), m_id},
                                     {QStringLiteral("IconName"), iconFor(state, now)},
                                     {QStringLiteral("TooltipText"), now.toolTip.toHtmlEscaped()},
                                     {QStringLiteral("Label"), now.label},
                                     {QStringLiteral("Visible"), state.isVisible},
                                     {QStringLiteral("IconSize"), 0},
                                     {QStringLiteral("PrimaryMenuIsOpen"), false},
                                     {QStringLiteral("SecondaryMenuIsOpen"), false},
                                     {QStringLiteral("Metadata"), QString()}});
    QVariantMap changed = m_properties;
    erase_if(changed, [&](const std::pair<const QString &, QVariant &> &property) {
        return before.value(property.first) == property.second;
    });
    if (changed.isEmpty() || !isNamed())
        return;
    // MATE's looks once whether there is a label, when the item is new.
    const QString label = QStringLiteral("Label");
    if (before.value(label).toString().isEmpty() == now.label.isEmpty())
        return tell(iconPath, QStringLiteral("org.freedesktop.DBus.Properties"), "PropertiesChanged",
                    {interface, changed, QStringList()});
    const QVariant icon = QVariant::fromValue(QDBusObjectPath(iconPath));
    tell(managerPath, managerInterface, "InterfacesRemoved", {icon, QStringList(interface)});
    tell(managerPath, managerInterface, "InterfacesAdded",
         {icon, QVariant::fromValue(Interfaces{{interface, m_properties}})});
}

void StatusIcon::tell(const QString &path, const QString &about, const char *change,
                      const QVariantList &arguments) const
{
    QDBusMessage signal = QDBusMessage::createSignal(path, about, QLatin1String(change));
    signal.setArguments(arguments);
    m_bus.send(signal);
}

QString StatusIcon::introspect(const QString &) const
{
    return {};
}

bool StatusIcon::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    // Whatever else they ask or tell (a scroll, a size) has an empty answer.
    connection.send(message.createReply(answer(message)));
    if (message.member() == QLatin1String("ButtonPress"))
        press(message.arguments());
    return true;
}

QVariantList StatusIcon::answer(const QDBusMessage &message) const
{
    if (message.member() == QLatin1String("GetManagedObjects"))
        return {QVariant::fromValue(Objects{{QDBusObjectPath(iconPath), {{interface, m_properties}}}})};
    if (message.member() == QLatin1String("GetAll"))
        return {m_properties};
    if (message.member() == QLatin1String("Get"))
        return {
            QVariant::fromValue(QDBusVariant(m_properties.value(message.arguments().value(1).toString())))};
    return {};
}

// x, y, button, time, the panel's edge.
void StatusIcon::press(const QVariantList &arguments)
{
    constexpr uint middleButton = 2;
    if (arguments.size() < 4 || arguments[2].toUInt() == middleButton)
        return;
    mivora::holdActivation({.time = arguments[3].toUInt()});
    m_openMenu({arguments[0].toInt(), arguments[1].toInt()});
}

} // namespace kelo
