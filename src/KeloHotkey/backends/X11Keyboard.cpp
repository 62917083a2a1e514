#include "KeloHotkey/backends/X11Keyboard.h"

#include <QCoreApplication>
#include <QGuiApplication>

// The header has a member with the name of a C++ keyword.
#define explicit isExplicit
#include <xcb/xkb.h>
#undef explicit

namespace kelo {

namespace {

constexpr std::uint16_t layoutParts = XCB_XKB_STATE_PART_GROUP_STATE | XCB_XKB_STATE_PART_GROUP_BASE |
                                      XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;

int xkbEventCode(xcb_connection_t *connection)
{
    const auto *extension = connection ? xcb_get_extension_data(connection, &xcb_xkb_id) : nullptr;
    return extension && extension->present ? extension->first_event : -1;
}

} // namespace

X11Keyboard::X11Keyboard(QObject *parent) : QObject(parent), m_xkbEvent(xkbEventCode(connection()))
{
    if (auto *application = QCoreApplication::instance())
        application->installNativeEventFilter(this);
}

X11Keyboard::~X11Keyboard() = default;

xcb_connection_t *X11Keyboard::connection()
{
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const auto *x11 =
        application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

void X11Keyboard::ringBell()
{
    xcb_connection_t *display = connection();
    if (!display)
        return;
    // 0: as loud as the user has set it.
    xcb_bell(display, 0);
    xcb_flush(display);
}

bool X11Keyboard::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (m_xkbEvent < 0 || eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int type = event->response_type & 0x7f;
    if (type == XCB_MAPPING_NOTIFY)
        Q_EMIT keymapChanged();
    if (type != m_xkbEvent)
        return false;
    // All events of the extension share one code; the second byte says which it is.
    switch (event->pad0) {
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        Q_EMIT keymapChanged();
        break;
    case XCB_XKB_STATE_NOTIFY:
        if (static_cast<const xcb_xkb_state_notify_event_t *>(message)->changed & layoutParts)
            Q_EMIT layoutSwitched();
        break;
    default:
        break;
    }
    return false;
}

} // namespace kelo
