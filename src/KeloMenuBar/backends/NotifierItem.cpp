#include "KeloMenuBar/backends/NotifierItem.h"

#include <QDBusError>
#include <QTimer>
#include <chrono>
#include <utility>

namespace kelo {

namespace {

// The height of a panel's icons, and twice that for dense screens.
constexpr int pictureHeights[] = {22, 44};

// By then a host has made what shows the item, on a busy desktop as well.
constexpr std::chrono::milliseconds labelDelay{700};

} // namespace

NotifierItem::NotifierItem(const QDBusConnection &bus, const QString &id,
                           std::function<bool(QPoint)> openMenu, QObject *exported)
    : QDBusAbstractAdaptor(exported), m_bus(bus), m_id(id), m_openMenu(std::move(openMenu))
{
    registerBusTypes();
}

void NotifierItem::setProperties(const NotifierProperties &now)
{
    const NotifierProperties before = std::exchange(m_properties, now);
    if (before.picture != now.picture)
        m_pixmaps.clear();
    if (now.title != before.title)
        Q_EMIT NewTitle();
    if (now.status != before.status)
        Q_EMIT NewStatus(now.status);
    if (now.iconThemePath != before.iconThemePath)
        Q_EMIT NewIconThemePath(now.iconThemePath);
    if (now.iconName != before.iconName || now.picture != before.picture ||
        now.iconDescription != before.iconDescription)
        Q_EMIT NewIcon();
    if (now.label != before.label || now.labelGuide != before.labelGuide)
        Q_EMIT XAyatanaNewLabel(now.label, now.labelGuide);
    if (now.toolTip != before.toolTip)
        Q_EMIT NewToolTip();
}

QList<NotifierPixmap> NotifierItem::iconPixmap()
{
    if (m_pixmaps.isEmpty() && m_properties.picture) {
        for (int height : pictureHeights)
            m_pixmaps << NotifierPixmap::fromImage(m_properties.picture->draw(height));
    }
    return m_pixmaps;
}

QString NotifierItem::label()
{
    if (!std::exchange(m_isLabelRead, true))
        QTimer::singleShot(labelDelay, this, &NotifierItem::announceLabelAgain);
    return m_properties.label;
}

// The host passes over what it believes to know; the blank is never drawn.
void NotifierItem::announceLabelAgain()
{
    if (m_properties.label.isEmpty())
        return;
    Q_EMIT XAyatanaNewLabel(m_properties.label + u' ', m_properties.labelGuide);
    Q_EMIT XAyatanaNewLabel(m_properties.label, m_properties.labelGuide);
}

// Some hosts (MATE's, Plasma's) activate an item although it says that it is but a menu.
void NotifierItem::Activate(int x, int y, const QDBusMessage &call)
{
    openMenu({x, y}, call);
}

void NotifierItem::ContextMenu(int x, int y, const QDBusMessage &call)
{
    openMenu({x, y}, call);
}

void NotifierItem::openMenu(QPoint point, const QDBusMessage &call)
{
    if (m_openMenu(point))
        return;
    call.setDelayedReply(true);
    m_bus.send(
        call.createErrorReply(QDBusError::NotSupported, QStringLiteral("its menu is the host's to open")));
}

void NotifierItem::SecondaryActivate(int, int) {}

void NotifierItem::XAyatanaSecondaryActivate(uint) {}

void NotifierItem::Scroll(int, const QString &) {}

void NotifierItem::ProvideXdgActivationToken(const QString &token)
{
    m_activationToken = token.toUtf8();
}

} // namespace kelo
