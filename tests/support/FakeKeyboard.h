#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <initializer_list>

struct xcb_connection_t;

namespace support {

/// Presses keys on an X display as a user would, through the XTEST extension and a connection of its own.
/// Keys are Linux key codes (KEY_V, … of linux/input-event-codes.h). Keys still held are released at the end.
class FakeKeyboard final
{
public:
    /// Throws std::runtime_error when there is no such display.
    explicit FakeKeyboard(const QByteArray &display = qgetenv("DISPLAY"));
    ~FakeKeyboard();
    Q_DISABLE_COPY_MOVE(FakeKeyboard)

    void press(int key);
    void release(int key);

    /// Presses the keys in their order and releases them in the opposite one.
    void tap(std::initializer_list<int> keys);

    /// Gives the display another keyboard layout (setxkbmap's "fr", "ru,us", …). False when that failed.
    bool setLayout(const QString &layout);

private:
    void send(int type, int key);

    QByteArray m_display;
    xcb_connection_t *m_connection = nullptr;
    QList<int> m_held;
};

} // namespace support
