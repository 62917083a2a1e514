#pragma once

#include "Platform/linux/X11Connection.h"

#include <QProcess>
#include <initializer_list>
#include <linux/input-event-codes.h>
#include <xcb/xtest.h>

// What a user does with the keyboard of the X display.
namespace support {

/// Presses the keys in their order and releases them in the opposite one, through the XTEST extension. Keys
/// are Linux key codes (KEY_V, … of linux/input-event-codes.h). They have gone through the server when this
/// returns.
inline void tap(std::initializer_list<int> keys)
{
    const mivora::X11Connection x11;
    const auto send = [&](std::uint8_t type, int key) {
        // X key codes stand 8 above Linux ones.
        xcb_test_fake_input(x11.get(), type, std::uint8_t(key + 8), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    };
    for (const int key : keys)
        send(XCB_KEY_PRESS, key);
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
        send(XCB_KEY_RELEASE, *key);
    // A round trip.
    x11.inputFocus();
}

/// Goes on to the next of several layouts. It is Menu.
inline constexpr int layoutKey = KEY_COMPOSE;

/// Gives the display another keyboard layout (setxkbmap's "fr", "ru,us", …). False when that failed.
inline bool setLayout(const QString &layout)
{
    return QProcess::execute(QStringLiteral("setxkbmap"),
                             {QStringLiteral("-layout"), layout, QStringLiteral("-option"),
                              QStringLiteral("grp:menu_toggle")}) == 0;
}

} // namespace support
