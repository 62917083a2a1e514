#include "KeloHotkey/backends/Keyboard.h"

#include "Platform/linux/X11Connection.h"

#include <QCoreApplication>
#include <QPointer>

// The header has a member with the name of a C++ keyword.
#define explicit isExplicit
#include <xcb/xkb.h>
#undef explicit

namespace kelo {

namespace {

constexpr std::uint16_t layoutParts = XCB_XKB_STATE_PART_GROUP_STATE | XCB_XKB_STATE_PART_GROUP_BASE |
                                      XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;

// Of an event of the extension. All of them share one code; the second byte says which it is.
bool isChange(const xcb_generic_event_t *event)
{
    if (event->pad0 == XCB_XKB_STATE_NOTIFY)
        return reinterpret_cast<const xcb_xkb_state_notify_event_t *>(event)->changed & layoutParts;
    return event->pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event->pad0 == XCB_XKB_MAP_NOTIFY;
}

} // namespace

Keyboard &Keyboard::instance()
{
    static QPointer<Keyboard> current;
    if (!current)
        current = new Keyboard(QCoreApplication::instance());
    return *current;
}

Keyboard::Keyboard(QObject *application) : QObject(application), m_wayland([this] { Q_EMIT changed(); })
{
    connect(this, &Keyboard::changed, this, [this] { m_layout.reset(); });
    if (!mivora::X11Connection::isAvailable())
        return;
    const auto *extension = xcb_get_extension_data(mivora::X11Connection().get(), &xcb_xkb_id);
    if (extension && extension->present)
        m_xkbEvent = extension->first_event;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

const LatinLayout &Keyboard::layout()
{
    if (!m_layout)
        m_layout = mivora::X11Connection::isAvailable()
                       ? LatinLayout::fromDisplay(mivora::X11Connection().get())
                       : LatinLayout::fromText(m_wayland.keymap(), m_wayland.active());
    return *m_layout;
}

bool Keyboard::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int type = event->response_type & 0x7f;
    if (type == XCB_MAPPING_NOTIFY || (type == m_xkbEvent && isChange(event)))
        Q_EMIT changed();
    return false;
}

} // namespace kelo
