#include "KeloTheme/Appearance.h"

#include "KeloTheme/PortalSettings.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

namespace kelo {

Appearance::Appearance(const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_portal(new PortalSettings(bus, this))
{
    connect(m_portal, &PortalSettings::looksChanged, this, &Appearance::update);
    qGuiApp->installEventFilter(this);
    update();
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        update();
    return QObject::eventFilter(watched, event);
}

void Appearance::update()
{
    const ColorScheme newScheme = scheme();
    const SystemColors newColors = SystemColors::of(newScheme, m_portal->looks().accent.value_or(QColor()));
    const double newScale = std::clamp(m_portal->looks().textScale, 0.8, 1.25);
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
    switch (m_portal->looks().scheme) {
    case DesktopLooks::Preference::dark:
        return ColorScheme::dark;
    case DesktopLooks::Preference::light:
        return ColorScheme::light;
    case DesktopLooks::Preference::none:
        break;
    }
    return QGuiApplication::palette().window().color().lightness() < 128 ? ColorScheme::dark
                                                                         : ColorScheme::light;
}

} // namespace kelo
