#include "KeloHotkeyRecorder/SystemBeep.h"

#include "KeloHotkey/backends/X11Keyboard.h"

#include <xcb/xcb.h>

namespace kelo {

void systemBeep()
{
    xcb_connection_t *connection = X11Keyboard::connection();
    if (!connection)
        return;
    // 0: as loud as the user has set it.
    xcb_bell(connection, 0);
    xcb_flush(connection);
}

} // namespace kelo
