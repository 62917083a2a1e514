#include "KeloMenuBar/StatusItem.h"

#include "KeloMenuBar/backends/NotifierBackend.h"

#include <QPoint>
#include <QTimer>

namespace kelo {

StatusItem::StatusItem(const QString &id, const QDBusConnection &bus, QObject *parent) : QObject(parent)
{
    if (bus.isConnected()) {
        m_notifier = std::make_unique<NotifierBackend>(
            bus, id, [this] { return buildMenu(); }, [this](QPoint position) { openMenu(position); });
    }
}

StatusItem::~StatusItem() = default;

void StatusItem::setTitle(const QString &title)
{
    change(&StatusItemState::title, title);
}

void StatusItem::setCountdown(const QString &countdown)
{
    change(&StatusItemState::countdown, countdown);
}

void StatusItem::setUrgent(bool isUrgent)
{
    change(&StatusItemState::isUrgent, isUrgent);
}

void StatusItem::setIcon(const QString &symbol, const QString &accessibilityDescription)
{
    change(&StatusItemState::icon, symbol);
    change(&StatusItemState::accessibilityDescription, accessibilityDescription);
}

void StatusItem::setToolTip(const QString &toolTip)
{
    change(&StatusItemState::toolTip, toolTip);
}

void StatusItem::setVisible(bool isVisible)
{
    change(&StatusItemState::isVisible, isVisible);
}

template<typename Value> void StatusItem::change(Value StatusItemState::*member, const Value &value)
{
    if (m_state.*member == value)
        return;
    m_state.*member = value;
    if (!std::exchange(m_isFlushDue, true))
        QTimer::singleShot(0, this, &StatusItem::flush);
    Q_EMIT stateChanged();
}

void StatusItem::flush()
{
    m_isFlushDue = false;
    if (m_notifier)
        m_notifier->show(m_state);
}

Menu StatusItem::buildMenu() const
{
    Menu menu;
    if (menuNeedsUpdate)
        menuNeedsUpdate(menu);
    return menu;
}

void StatusItem::openMenu(QPoint) {}

} // namespace kelo
