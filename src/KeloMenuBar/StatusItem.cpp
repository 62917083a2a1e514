#include "KeloMenuBar/StatusItem.h"

#include "KeloMenuBar/backends/NotifierBackend.h"
#include "KeloMenuBar/backends/PopupMenu.h"
#include "KeloMenuBar/backends/TrayBackend.h"

#include <QLoggingCategory>
#include <QPoint>
#include <chrono>

namespace kelo {

Q_LOGGING_CATEGORY(menuBarLog, "kelo.menubar")

namespace {

// At login, panels often start later than we do.
constexpr std::chrono::seconds hostTimeout{10};

} // namespace

StatusItem::StatusItem(const QString &id, ViewLoader &views, const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_views(views)
{
    m_flush.setSingleShot(true);
    connect(&m_flush, &QTimer::timeout, this, &StatusItem::flush);
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

void StatusItem::setState(const StatusItemState &state)
{
    if (state == m_state)
        return;
    m_state = state;
    m_flush.start();
}

void StatusItem::flush()
{
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
        m_popup = std::make_unique<PopupMenu>(m_views);
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
