#include "KeloMenuBar/StatusItem.h"

#include "KeloMenuBar/backends/NotifierBackend.h"
#include "KeloMenuBar/backends/PopupMenu.h"
#include "KeloMenuBar/backends/TrayBackend.h"

#include <QLoggingCategory>
#include <QPoint>
#include <chrono>
#include <utility>

namespace kelo {

Q_LOGGING_CATEGORY(menuBarLog, "kelo.menubar")

namespace {

// At login, panels often start later than we do.
constexpr std::chrono::seconds hostTimeout{10};

} // namespace

StatusItem::StatusItem(const QString &id, const QDBusConnection &bus, QObject *parent) : QObject(parent)
{
    m_noHost.setSingleShot(true);
    connect(&m_noHost, &QTimer::timeout, this, &StatusItem::sayIfNothingShowsIt);
    m_noHost.start(hostTimeout);
    if (!bus.isConnected()) {
        QTimer::singleShot(0, this, [this] { setNotifierHost(false); });
        return;
    }
    m_notifier = std::make_unique<NotifierBackend>(
        bus, id, [this] { return buildMenu(); }, [this](QPoint position) { openMenu(position); });
    connect(m_notifier.get(), &NotifierBackend::hostChanged, this, &StatusItem::setNotifierHost);
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
    if (m_tray)
        m_tray->show(m_state);
}

Menu StatusItem::buildMenu() const
{
    Menu menu;
    if (menuNeedsUpdate)
        menuNeedsUpdate(menu);
    return menu;
}

void StatusItem::openMenu(QPoint position)
{
    // Elsewhere than on X11 a program can't place a window; there, hosts show the menu themselves.
    if (!TrayBackend::applies())
        return;
    if (!m_popup)
        m_popup = std::make_unique<PopupMenu>();
    m_popup->open(buildMenu(), position);
}

void StatusItem::setNotifierHost(bool isThere)
{
    if (isThere) {
        m_tray.reset();
    } else if (!m_tray && TrayBackend::applies()) {
        m_tray = std::make_unique<TrayBackend>([this](QPoint position) { openMenu(position); });
        m_tray->show(m_state);
    }
}

void StatusItem::sayIfNothingShowsIt()
{
    const bool isShown = (m_notifier && m_notifier->hasHost()) || (m_tray && m_tray->hasTray());
    if (!isShown)
        qCWarning(menuBarLog, "No status area found: the icon is shown as soon as there is one");
}

} // namespace kelo
