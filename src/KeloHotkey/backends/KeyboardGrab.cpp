#include "KeloHotkey/backends/KeyboardGrab.h"

#include "Platform/linux/X11Connection.h"

#include <QWindow>
#include <chrono>

namespace kelo {

namespace {

constexpr std::chrono::seconds limit{30};

void release()
{
    const mivora::X11Connection x11;
    xcb_ungrab_keyboard(x11.get(), XCB_CURRENT_TIME);
    x11.flush();
}

} // namespace

KeyboardGrab::KeyboardGrab(const QWindow &window)
{
    if (!mivora::X11Connection::isAvailable())
        return;
    const mivora::X11Connection x11;
    // Of the window with the focus: a grab of another one would be told to Qt as a loss of the focus.
    const auto cookie = xcb_grab_keyboard(x11.get(), true, xcb_window_t(window.winId()), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    // Refused while another program has a grab: then the window manager's keys stay its own.
    xcb_discard_reply(x11.get(), cookie.sequence);
    x11.flush();
    m_limit.setSingleShot(true);
    m_limit.callOnTimeout(release);
    m_limit.start(limit);
}

KeyboardGrab::~KeyboardGrab()
{
    if (m_limit.isActive())
        release();
}

void KeyboardGrab::prolong()
{
    if (m_limit.isActive())
        m_limit.start();
}

} // namespace kelo
