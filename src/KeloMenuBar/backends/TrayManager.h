#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QObject>
#include <xcb/xcb.h>

namespace kelo {

/// The XEmbed tray of the X screen: the owner of the selection _NET_SYSTEM_TRAY_S<n>, whenever it comes or
/// goes (System Tray Protocol of freedesktop.org). Only for the xcb platform.
class TrayManager final : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    TrayManager();

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
    xcb_atom_t atom(const QByteArray &name) const;
    xcb_window_t selectionOwner() const;
    void find();
    void forget();

    xcb_connection_t *m_connection = nullptr;
    xcb_screen_t *m_screen = nullptr;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_managerMessage = XCB_ATOM_NONE;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
};

} // namespace kelo
