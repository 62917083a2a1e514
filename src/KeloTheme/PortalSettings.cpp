#include "KeloTheme/PortalSettings.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <array>
#include <cmath>

namespace kelo {

namespace {

using Groups = QMap<QString, QVariantMap>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

void readScheme(const QVariant &value, DesktopLooks &looks)
{
    using enum DesktopLooks::Preference;
    constexpr std::array preferences{none, dark, light};
    const uint number = value.toUInt();
    looks.scheme = number < preferences.size() ? preferences[number] : none;
}

// Three numbers from 0 to 1; anything outside means that the user has chosen no colour.
void readAccent(const QVariant &value, DesktopLooks &looks)
{
    looks.accent.reset();
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return;
    std::array<double, 3> rgb{};
    argument.beginStructure();
    for (double &channel : rgb)
        argument >> channel;
    argument.endStructure();
    for (const double channel : rgb) {
        if (!(channel >= 0 && channel <= 1))
            return;
    }
    looks.accent = QColor::fromRgbF(float(rgb[0]), float(rgb[1]), float(rgb[2]));
}

void readTextScale(const QVariant &value, DesktopLooks &looks)
{
    const double scale = value.toDouble();
    looks.textScale = std::isfinite(scale) && scale > 0 ? scale : 1;
}

struct Setting
{
    const char *group;
    const char *key;
    void (*read)(const QVariant &, DesktopLooks &);
};

constexpr std::array settings{
    Setting{"org.freedesktop.appearance", "color-scheme", readScheme},
    Setting{"org.freedesktop.appearance", "accent-color", readAccent},
    Setting{"org.gnome.desktop.interface", "text-scaling-factor", readTextScale},
};

void readSetting(const QString &group, const QString &key, const QVariant &value, DesktopLooks &looks)
{
    for (const Setting &setting : settings) {
        if (group == QLatin1String(setting.group) && key == QLatin1String(setting.key))
            setting.read(value, looks);
    }
}

} // namespace

PortalSettings::PortalSettings(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus)
{
    m_bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                  SLOT(readOne(QDBusMessage)));
    auto *watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalSettings::readAll);
    readAll();
}

void PortalSettings::readAll()
{
    QDBusMessage request =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    QStringList groups;
    for (const Setting &setting : settings)
        groups << QLatin1String(setting.group);
    groups.removeDuplicates();
    request << groups;
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(request), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &PortalSettings::finishReading);
}

void PortalSettings::finishReading(QDBusPendingCallWatcher *call)
{
    call->deleteLater();
    const QDBusMessage reply = call->reply();
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a{sa{sv}}"))
        return;
    const auto groups = qdbus_cast<Groups>(reply.arguments().constFirst());
    DesktopLooks looks;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        for (auto entry = group->begin(); entry != group->end(); ++entry)
            readSetting(group.key(), entry.key(), entry.value(), looks);
    }
    change(looks);
}

void PortalSettings::readOne(const QDBusMessage &signal)
{
    if (signal.signature() != QLatin1String("ssv"))
        return;
    const QVariantList arguments = signal.arguments();
    DesktopLooks looks = m_looks;
    readSetting(arguments[0].toString(), arguments[1].toString(),
                arguments[2].value<QDBusVariant>().variant(), looks);
    change(looks);
}

void PortalSettings::change(const DesktopLooks &looks)
{
    if (looks == m_looks)
        return;
    m_looks = looks;
    Q_EMIT looksChanged();
}

} // namespace kelo
