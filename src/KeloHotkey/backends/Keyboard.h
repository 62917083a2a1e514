#pragma once

#include "KeloHotkey/backends/LatinLayout.h"
#include "KeloHotkey/backends/WaylandKeyboard.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace kelo {

/// The keyboard of the display that the application is on: the layout that names its keys, and when that
/// changes. Where there is no display it is that of XKB_DEFAULT_LAYOUT.
///
/// Relies on Qt, which asks for the events of the XKB extension on its connection to an X server.
class Keyboard final : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// That of the application, made with the first use.
    static Keyboard &instance();

    const LatinLayout &layout();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    /// The keymap or the meaning of the modifiers is another one, or the user switched to another layout of
    /// the keymap. Comes in bursts.
    void changed();

private:
    explicit Keyboard(QObject *application);

    std::optional<LatinLayout> m_layout;
    int m_xkbEvent = -1;
    WaylandKeyboard m_wayland;
};

} // namespace kelo
