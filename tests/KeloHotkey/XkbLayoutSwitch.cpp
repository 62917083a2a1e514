#include "XkbLayoutSwitch.h"

#include <cstdint>

// The header has a member with the name of a C++ keyword.
#define explicit isExplicit
#include <xcb/xkb.h>
#undef explicit

void lockLayout(xcb_connection_t *connection, int index)
{
    xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, true,
                             static_cast<std::uint8_t>(index), 0, false, 0);
    xcb_flush(connection);
}
