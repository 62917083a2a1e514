#pragma once

#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <QWindow>

/// An XEmbed tray, on a connection of its own: owns the tray's selection and takes in the windows of this
/// program, as stalonetray would.
class FakeTray final
{
public:
    /// Announces itself to the programs that wait for a tray.
    FakeTray()
    {
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_x11.root(), 100, 0, 24, 24, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(m_connection, m_window);
        const xcb_atom_t selection = m_x11.atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(m_connection, m_window, selection, XCB_CURRENT_TIME);

        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = m_x11.root();
        message.type = m_x11.atom("MANAGER");
        message.data.data32[1] = selection;
        xcb_send_event(m_connection, false, m_x11.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char *>(&message));
        xcb_flush(m_connection);
    }

    /// Gives the windows back and disappears.
    ~FakeTray()
    {
        if (icon())
            xcb_reparent_window(m_connection, m_icon, m_x11.root(), 0, 0);
        xcb_destroy_window(m_connection, m_window);
        xcb_disconnect(m_connection);
    }

    Q_DISABLE_COPY_MOVE(FakeTray)

    /// Takes in who has asked since the last call. Returns the window last taken in, if it is still there.
    QWindow *icon()
    {
        while (const auto event = mivora::owned(xcb_poll_for_event(m_connection))) {
            const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
            if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE || message->data.data32[1] != 0)
                continue;
            m_icon = message->data.data32[2];
            xcb_reparent_window(m_connection, m_icon, m_window, 0, 0);
            xcb_flush(m_connection);
        }
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->handle() && window->winId() == m_icon)
                return window;
        }
        return nullptr;
    }

    bool showsIcon() { return icon() && icon()->isExposed(); }

private:
    const mivora::X11Connection m_x11;
    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    xcb_window_t m_window = xcb_generate_id(m_connection);
    xcb_window_t m_icon = XCB_WINDOW_NONE;
};
