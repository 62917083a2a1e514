#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

struct xcb_connection_t;

namespace kelo {

/// Tells when the X server's keyboard changes. Silent where the application has no X display.
///
/// Relies on Qt, which asks for these events of the XKB extension on its connection.
class X11Keyboard final : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit X11Keyboard(QObject *parent = nullptr);
    ~X11Keyboard() override;

    /// The application's connection to the X server; null when it runs on something else.
    static xcb_connection_t *connection();

    /// Rings the server's bell, which desktops turn into their alert sound. Silent without an X display.
    static void ringBell();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    /// The keymap or the meaning of the modifiers is another one. Comes in bursts.
    void keymapChanged();
    /// The user switched to another layout of the keymap.
    void layoutSwitched();

private:
    int m_xkbEvent = -1;
};

} // namespace kelo
