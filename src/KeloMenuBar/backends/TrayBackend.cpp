#include "KeloMenuBar/backends/TrayBackend.h"

#include <utility>

namespace kelo {

bool TrayBackend::applies()
{
    return mivora::X11Connection::isAvailable();
}

TrayBackend::TrayBackend(std::function<void(QPoint)> openMenu) : m_openMenu(std::move(openMenu))
{
    connect(&m_manager, &TrayManager::appeared, this, [this] {
        m_hasTray = true;
        dock();
    });
    connect(&m_manager, &TrayManager::gone, this, [this] {
        m_hasTray = false;
        undock();
    });
    connect(&m_manager, &TrayManager::docked, this, [this](quint32 window) {
        // Shown any earlier, the window would be seen outside of the tray for a moment.
        if (m_window && m_window->winId() == window)
            m_window->show();
    });
    m_manager.start();
}

void TrayBackend::show(const StatusItemState &state)
{
    const bool wasVisible = std::exchange(m_state, state).isVisible;
    if (wasVisible != state.isVisible)
        state.isVisible ? dock() : undock();
    if (!m_window)
        return;
    const QString title = state.title.trimmed();
    m_window->setTitle(title.isEmpty() ? state.accessibilityDescription : title);
    m_window->setPicture({.shape = StatusPicture::Shape::Square,
                          .symbol = state.icon,
                          .text = state.countdown.trimmed(),
                          .isUrgent = state.isUrgent});
}

void TrayBackend::dock()
{
    if (!m_hasTray || !m_state.isVisible)
        return;
    m_window = std::make_unique<TrayWindow>(
        m_manager.hasAlpha() ? TrayWindow::Background::Transparent : TrayWindow::Background::Cut, m_openMenu);
    m_window->create();
    show(StatusItemState(m_state));
    m_manager.dock(static_cast<xcb_window_t>(m_window->winId()),
                   qRound(m_window->height() * m_window->devicePixelRatio()));
}

void TrayBackend::undock()
{
    m_window.reset();
}

} // namespace kelo
