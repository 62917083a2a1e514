#include "KeloHotkey/backends/KeyboardGrab.h"

#include "KeloHotkey/backends/X11Keyboard.h"

#include <QWindow>
#include <chrono>
#include <utility>
#include <xcb/xcb.h>

namespace kelo {

namespace {

constexpr std::chrono::seconds limit{30};

} // namespace

KeyboardGrab::KeyboardGrab(const QWindow &window) : m_connection(X11Keyboard::connection())
{
    if (!m_connection)
        return;
    // Of the window with the focus: a grab of another one would be told to Qt as a loss of the focus.
    const auto cookie = xcb_grab_keyboard(m_connection, true, xcb_window_t(window.winId()), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    // Refused while another program has a grab: then the window manager's keys stay its own.
    xcb_discard_reply(m_connection, cookie.sequence);
    xcb_flush(m_connection);
    m_limit.setSingleShot(true);
    QObject::connect(&m_limit, &QTimer::timeout, &m_limit, [this] { release(); });
    m_limit.start(limit);
}

KeyboardGrab::~KeyboardGrab()
{
    release();
}

void KeyboardGrab::prolong()
{
    if (m_limit.isActive())
        m_limit.start();
}

void KeyboardGrab::release()
{
    xcb_connection_t *connection = std::exchange(m_connection, nullptr);
    if (!connection)
        return;
    xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
    xcb_flush(connection);
}

} // namespace kelo
