#include "KeloMenuBar/StatusItemController.h"

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

StatusItemController::StatusItemController(const QString &symbol, const QString &accessibilityDescription,
                                           std::function<void(Menu &)> build, const QString &id,
                                           ViewLoader &views, const QDBusConnection &bus)
    : m_build(std::move(build)), m_views(views),
      m_state({.icon = symbol, .accessibilityDescription = accessibilityDescription})
{
    m_flush.setSingleShot(true);
    connect(&m_flush, &QTimer::timeout, this, &StatusItemController::flush);
    QTimer::singleShot(hostTimeout, this, &StatusItemController::sayIfNothingShowsIt);
    if (!bus.isConnected()) {
        QTimer::singleShot(0, this, [this] { setNotifierHost(false); });
        return;
    }
    m_notifier = std::make_unique<NotifierBackend>(
        bus, id, m_state, [this] { return buildMenu(); }, [this](QPoint position) { openMenu(position); });
    connect(m_notifier.get(), &NotifierBackend::hostChanged, this, &StatusItemController::setNotifierHost);
}

StatusItemController::~StatusItemController() = default;

void StatusItemController::setState(const StatusItemState &state)
{
    if (state == m_state)
        return;
    m_state = state;
    m_flush.start();
}

void StatusItemController::setVisible(bool isVisible)
{
    StatusItemState state = m_state;
    state.isVisible = isVisible;
    setState(state);
}

void StatusItemController::flush()
{
    if (m_notifier)
        m_notifier->update();
    if (m_tray)
        m_tray->update();
}

Menu StatusItemController::buildMenu() const
{
    Menu menu;
    m_build(menu);
    return menu;
}

void StatusItemController::openMenu(QPoint position)
{
    // Elsewhere than on X11 a program can't place a window; there, hosts show the menu themselves.
    if (!TrayBackend::applies())
        return;
    if (!m_popup)
        m_popup = std::make_unique<PopupMenu>(m_views);
    m_popup->open(buildMenu(), position);
}

void StatusItemController::setNotifierHost(bool isThere)
{
    if (isThere) {
        m_tray.reset();
    } else if (!m_tray && TrayBackend::applies()) {
        m_tray = std::make_unique<TrayBackend>(
            m_state, [this](QPoint position) { openMenu(position); }, [this] { updateShown(); });
    }
    updateShown();
}

void StatusItemController::updateShown()
{
    const bool isShown = (m_notifier && m_notifier->hasHost()) || (m_tray && m_tray->hasTray());
    if (std::exchange(m_isShown, isShown) != isShown)
        Q_EMIT isShownChanged();
}

void StatusItemController::sayIfNothingShowsIt()
{
    if (!m_isShown)
        qCWarning(menuBarLog, "No tray found: the icon is shown as soon as there is one");
}

} // namespace kelo
