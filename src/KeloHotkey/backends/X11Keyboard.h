#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace kelo {

/// Tells when the X server's keyboard changes. Silent where the application has no X display.
///
/// Relies on Qt, which asks for these events of the XKB extension on its connection.
class X11Keyboard final : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    X11Keyboard();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    /// The keymap or the meaning of the modifiers is another one, or the user switched to another layout of
    /// the keymap. Comes in bursts.
    void changed();

private:
    int m_xkbEvent = -1;
};

} // namespace kelo
