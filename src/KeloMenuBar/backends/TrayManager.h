#pragma once

#include "Platform/linux/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace kelo {

/// The XEmbed tray of the X screen: the owner of the selection _NET_SYSTEM_TRAY_S<n>, whenever it comes or
/// goes (System Tray Protocol of freedesktop.org). Only for the xcb platform.
class TrayManager final : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Looks for a tray; the signals follow it from then on.
    void start();

    /// Whether the tray can show windows with an alpha channel.
    bool hasAlpha() const;

    /// Asks the tray to take this window in, with this size in pixels. It says so by reparenting it.
    void dock(xcb_window_t window, int iconSize) const;

Q_SIGNALS:
    /// There is a tray, or another one than before.
    void appeared();
    void gone();
    /// The tray has taken this window in.
    void docked(quint32 window);

private:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    void find();
    void forget();

    const mivora::X11Connection m_x11;
    const QByteArray m_selection = m_x11.ofScreen("_NET_SYSTEM_TRAY_S");
    const xcb_atom_t m_selectionAtom = m_x11.atom(m_selection);
    const xcb_atom_t m_managerMessage = m_x11.atom("MANAGER");
    xcb_window_t m_owner = XCB_WINDOW_NONE;
};

} // namespace kelo
