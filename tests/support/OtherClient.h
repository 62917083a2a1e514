#pragma once

#include "Platform/linux/X11Connection.h"

#include <QtGlobal>

namespace support {

/// Another program on the same display, which grabs combinations as window managers do.
class OtherClient final
{
public:
    OtherClient() : m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root) {}

    ~OtherClient() { xcb_disconnect(m_connection); }

    Q_DISABLE_COPY_MOVE(OtherClient)

    /// The key is an X one. False when somebody else has the combination.
    bool grab(int key, int modifiers)
    {
        const auto request =
            xcb_grab_key_checked(m_connection, false, m_root, std::uint16_t(modifiers), xcb_keycode_t(key),
                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return !mivora::owned(xcb_request_check(m_connection, request));
    }

    /// How often its keys were pressed since the last call.
    int presses()
    {
        // An answer of the server comes after all presses so far.
        std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
        int count = 0;
        while (const auto event = mivora::owned(xcb_poll_for_queued_event(m_connection)))
            count += (event->response_type & 0x7f) == XCB_KEY_PRESS ? 1 : 0;
        return count;
    }

private:
    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace support
