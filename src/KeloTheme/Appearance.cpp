#include "KeloTheme/Appearance.h"

#include "Platform/linux/BusCall.h"
#include "Platform/linux/PortalRequest.h"
#include "Platform/linux/X11Connection.h"

#include <QDBusArgument>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace kelo {

using mivora::portalPath;
using mivora::portalService;

namespace {

using Groups = QMap<QString, QVariantMap>;

/// The size of text that views are drawn for.
constexpr double usualPoints = 10;

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

// "Cantarell Bold 11", as Pango writes fonts: family, styles, points.
void readPangoFont(const QVariant &value, DesktopLooks &looks)
{
    static const QRegularExpression format(
        QStringLiteral("^(.+?),?(?: (?:Bold|Italic|Oblique|Light|Medium|Regular|Book|Condensed))*,? "
                       "(\\d+(?:\\.\\d+)?)$"));
    const auto match = format.match(value.toString());
    looks.font = match.hasMatch() ? QFont(match.captured(1)) : QFont();
    if (match.hasMatch())
        looks.font.setPointSizeF(std::max(match.captured(2).toDouble(), 1.0));
}

// "Noto Sans,10,-1,5,…", as Qt writes them.
void readQtFont(const QVariant &value, DesktopLooks &looks)
{
    looks.font.fromString(value.toString());
}

void readContrast(const QVariant &value, DesktopLooks &looks)
{
    looks.prefersContrast = value.toUInt() == 1;
}

void readHighContrastTheme(const QVariant &value, DesktopLooks &looks)
{
    looks.hasHighContrastTheme = value.toBool();
}

void readReducedMotion(const QVariant &value, DesktopLooks &looks)
{
    looks.prefersReducedMotion = value.toUInt() == 1;
}

void readAnimations(const QVariant &value, DesktopLooks &looks)
{
    looks.hasAnimations =
        value.toString() != QLatin1String("false") && value.toString() != QLatin1String("0");
}

// The settings manager's property: of each setting its kind, its name and its value, in the byte order of the
// machine (freedesktop.org XSETTINGS). Numbers and texts alone.
QMap<QByteArray, QVariant> xSettings(const QByteArray &property)
{
    QMap<QByteArray, QVariant> settings;
    qsizetype place = 12;
    const auto number = [&](auto kind) {
        decltype(kind) value = 0;
        if (place + qsizetype(sizeof value) <= property.size())
            std::memcpy(&value, property.constData() + place, sizeof value);
        place += sizeof value;
        return value;
    };
    const auto bytes = [&](qsizetype length) {
        QByteArray text = property.mid(place, length);
        place += (length + 3) / 4 * 4;
        return text;
    };
    while (place < property.size()) {
        const int kind = number(quint16()) & 0xff;
        const QByteArray name = bytes(number(quint16()));
        number(quint32());
        if (kind == 0)
            settings.insert(name, number(qint32()));
        else if (kind == 1)
            settings.insert(name, QString::fromUtf8(bytes(number(quint32()))));
        else
            bytes(8);
    }
    return settings;
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
    Setting{"org.freedesktop.appearance", "contrast", readContrast},
    Setting{"org.freedesktop.appearance", "reduced-motion", readReducedMotion},
    Setting{"org.gnome.desktop.interface", "text-scaling-factor", readTextScale},
    Setting{"org.gnome.desktop.interface", "font-name", readPangoFont},
    Setting{"org.gnome.desktop.interface", "enable-animations", readAnimations},
    Setting{"org.gnome.desktop.a11y.interface", "high-contrast", readHighContrastTheme},
    Setting{"org.kde.kdeglobals.General", "font", readQtFont},
    Setting{"org.kde.kdeglobals.KDE", "AnimationDurationFactor", readAnimations},
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
    DesktopLooks looks = m_looks;
    if (const double scale = qEnvironmentVariable("MIVORA_TEXT_SCALE").toDouble(); scale > 0)
        readTextScale(scale, looks);
    if (const auto font = m_xSettings.find("Gtk/FontName"); font != m_xSettings.end())
        readPangoFont(*font, looks);
    if (const auto animations = m_xSettings.find("Gtk/EnableAnimations"); animations != m_xSettings.end())
        readAnimations(*animations, looks);
    const bool isHigh =
        looks.prefersContrast || looks.hasHighContrastTheme ||
        m_xSettings.value("Net/ThemeName").toString().startsWith(QLatin1String("HighContrast"));
    const ColorScheme newScheme = scheme();
    const SystemColors newColors =
        SystemColors::of(newScheme, looks.accent, isHigh ? ContrastLevel::high : ContrastLevel::normal);
    const double points = looks.font.resolveMask() ? looks.font.pointSizeF() : usualPoints;
    const double newScale = std::clamp(looks.textScale * points / usualPoints, 0.8, 2.0);
    const int newMotion = looks.hasAnimations && !looks.prefersReducedMotion;
    const QString newFamily =
        looks.font.resolveMask() ? looks.font.family() : QGuiApplication::font().family();
    if (newScheme == m_scheme && newColors == m_colors && qFuzzyCompare(newScale, m_textScale) &&
        newMotion == m_motion && newFamily == m_fontFamily)
        return;
    m_scheme = newScheme;
    m_colors = newColors;
    m_textScale = newScale;
    m_motion = newMotion;
    m_fontFamily = newFamily;
    // For what measures texts itself.
    QFont font(newFamily);
    font.setPixelSize(int(std::lround(13 * newScale)));
    if (looks.font.resolveMask() || newScale != 1)
        QGuiApplication::setFont(font);
    Q_EMIT changed();
}

void Appearance::readXSettings()
{
    if (!mivora::X11Connection::isAvailable())
        return;
    const mivora::X11Connection x11;
    const xcb_window_t manager = x11.selectionOwner(x11.ofScreen("_XSETTINGS_S"));
    if (manager == XCB_WINDOW_NONE)
        return;
    if (m_xSettingsAtom == XCB_ATOM_NONE) {
        m_xSettingsAtom = x11.atom("_XSETTINGS_SETTINGS");
        // Qt may listen to the manager's end, over this connection.
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x11.get(), manager, XCB_CW_EVENT_MASK, &events);
        qGuiApp->installNativeEventFilter(this);
    }
    m_xSettings = xSettings(x11.text(manager, m_xSettingsAtom, m_xSettingsAtom));
    update();
}

bool Appearance::nativeEventFilter(const QByteArray &type, void *message, qintptr *)
{
    if (type != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_property_notify_event_t *>(message);
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && event->atom == m_xSettingsAtom)
        readXSettings();
    return false;
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
