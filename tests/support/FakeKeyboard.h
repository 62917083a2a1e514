#pragma once

#include <QProcess>
#include <cstdlib>
#include <initializer_list>
#include <linux/input-event-codes.h>
#include <stdexcept>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace support {

/// Presses keys on the X display as a user would, through the XTEST extension and a connection of its own.
/// Keys are Linux key codes (KEY_V, … of linux/input-event-codes.h). Keys still held are released at the end.
class FakeKeyboard final
{
public:
    /// Throws std::runtime_error when there is no display.
    FakeKeyboard()
    {
        if (xcb_connection_has_error(m_connection))
            throw std::runtime_error("no display to press keys on");
    }

    ~FakeKeyboard()
    {
        while (!m_held.empty())
            release(m_held.back());
        xcb_disconnect(m_connection);
    }
    Q_DISABLE_COPY_MOVE(FakeKeyboard)

    void press(int key)
    {
        m_held.push_back(key);
        send(XCB_KEY_PRESS, key);
    }

    void release(int key)
    {
        std::erase(m_held, key);
        send(XCB_KEY_RELEASE, key);
    }

    /// Presses the keys in their order and releases them in the opposite one.
    void tap(std::initializer_list<int> keys)
    {
        for (const int key : keys)
            press(key);
        for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
            release(*key);
    }

    /// Goes on to the next of several layouts. It is Menu.
    static constexpr int layoutKey = KEY_COMPOSE;

    /// Gives the display another keyboard layout (setxkbmap's "fr", "ru,us", …). False when that failed.
    static bool setLayout(const QString &layout)
    {
        return QProcess::execute(QStringLiteral("setxkbmap"),
                                 {QStringLiteral("-layout"), layout, QStringLiteral("-option"),
                                  QStringLiteral("grp:menu_toggle")}) == 0;
    }

private:
    void send(int type, int key)
    {
        // X key codes stand 8 above Linux ones.
        xcb_test_fake_input(m_connection, std::uint8_t(type), std::uint8_t(key + 8), XCB_CURRENT_TIME,
                            XCB_NONE, 0, 0, 0);
        // A round trip: the key has gone through the server when this returns.
        std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    std::vector<int> m_held;
};

} // namespace support
