#pragma once

#include "KeloMenuBar/StatusItemController.h"
#include "KeloMenuBar/backends/TrayWindow.h"
#include "Platform/linux/X11Connection.h"

#include <QAbstractNativeEventFilter>

namespace kelo {

/// Shows the item in the XEmbed tray of the X screen, whenever there is one: in a window that the owner of
/// the selection _NET_SYSTEM_TRAY_S<n> takes in (System Tray Protocol of freedesktop.org).
class TrayBackend final : public QAbstractNativeEventFilter
{
public:
    /// Whether windows of this program can be docked at all: it runs on X11.
    static bool applies() { return mivora::X11Connection::isAvailable(); }

    /// `openMenu` shows the menu beside a point of the screen. `changed` is called when a tray comes or goes
    /// later. `state` outlives the backend.
    TrayBackend(const StatusItemState &state, std::function<void(QPoint)> openMenu,
                std::function<void()> changed);

    /// Shows the state as it is now.
    void update();

    /// Whether a tray shows the item, or has been asked to.
    bool hasTray() const { return m_tray != XCB_WINDOW_NONE; }

private:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    void find();
    void dock();
    void askToDock() const;
    bool hasAlpha() const;

    const StatusItemState &m_state;
    std::function<void(QPoint)> m_openMenu;
    std::function<void()> m_changed;
    const mivora::X11Connection m_x11;
    const QByteArray m_selection = m_x11.ofScreen("_NET_SYSTEM_TRAY_S");
    const xcb_atom_t m_selectionAtom = m_x11.atom(m_selection);
    const xcb_atom_t m_managerMessage = m_x11.atom("MANAGER");
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    std::unique_ptr<TrayWindow> m_window;
};

} // namespace kelo
