#include "KeloTheme/Appearance.h"

#include "Platform/linux/BusCall.h"
#include "Platform/linux/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kelo {

using mivora::portalPath;
using mivora::portalService;

namespace {

using Groups = QMap<QString, QVariantMap>;

const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

void readScheme(const QVariant &value, DesktopLooks &looks)
{
    looks.scheme.reset();
    if (value.toUInt() == 1)
        looks.scheme = ColorScheme::dark;
    else if (value.toUInt() == 2)
        looks.scheme = ColorScheme::light;
}

// Three numbers from 0 to 1; anything outside means that the user has chosen no colour.
void readAccent(const QVariant &value, DesktopLooks &looks)
{
    looks.accent = QColor();
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return;
    std::array<double, 3> rgb{};
    argument.beginStructure();
    for (double &channel : rgb)
        argument >> channel;
    argument.endStructure();
    if (std::ranges::all_of(rgb, [](double channel) { return channel >= 0 && channel <= 1; }))
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

Appearance::Appearance(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus)
{
    m_bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                  SLOT(readOne(QDBusMessage)));
    auto *watcher =
        new QDBusServiceWatcher(portalService, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        mivora::introduceToPortal(m_bus);
        readAll();
    });
    readAll();
    qGuiApp->installEventFilter(this);
    update();
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        update();
    else if (watched->isWindowType())
        noteInput(*event);
    return QObject::eventFilter(watched, event);
}

void Appearance::noteInput(const QEvent &event)
{
    const bool isKey = event.type() == QEvent::KeyPress;
    if (!isKey && event.type() != QEvent::MouseButtonPress && event.type() != QEvent::TouchBegin)
        return;
    if (std::exchange(m_usesKeyboard, isKey) != isKey)
        Q_EMIT usesKeyboardChanged();
}

void Appearance::readAll()
{
    auto request = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                                  QStringLiteral("ReadAll"));
    QStringList groups;
    for (const Setting &setting : settings)
        groups << QLatin1String(setting.group);
    groups.removeDuplicates();
    mivora::callBus<>(m_bus, request << groups, this, [this](const QDBusPendingReply<> &reply) {
        const QDBusMessage answer = reply.reply();
        if (reply.isError() || answer.signature() != QLatin1String("a{sa{sv}}"))
            return;
        m_looks = {};
        const auto groups = qdbus_cast<Groups>(answer.arguments().constFirst());
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto entry = group->begin(); entry != group->end(); ++entry)
                readSetting(group.key(), entry.key(), entry.value(), m_looks);
        }
        update();
    });
}

void Appearance::readOne(const QDBusMessage &signal)
{
    if (signal.signature() != QLatin1String("ssv"))
        return;
    const QVariantList arguments = signal.arguments();
    readSetting(arguments[0].toString(), arguments[1].toString(),
                arguments[2].value<QDBusVariant>().variant(), m_looks);
    update();
}

void Appearance::update()
{
    const ColorScheme newScheme = scheme();
    const SystemColors newColors = SystemColors::of(newScheme, m_looks.accent);
    const double newScale = std::clamp(m_looks.textScale, 0.8, 1.25);
    if (newScheme == m_scheme && newColors == m_colors && qFuzzyCompare(newScale, m_textScale))
        return;
    m_scheme = newScheme;
    m_colors = newColors;
    m_textScale = newScale;
    Q_EMIT changed();
}

ColorScheme Appearance::scheme() const
{
    const QByteArray wanted = qgetenv("MIVORA_APPEARANCE");
    if (wanted == "dark" || wanted == "light")
        return wanted == "dark" ? ColorScheme::dark : ColorScheme::light;
    const bool isDark = QGuiApplication::palette().window().color().lightness() < 128;
    return m_looks.scheme.value_or(isDark ? ColorScheme::dark : ColorScheme::light);
}

} // namespace kelo
