#pragma once

#include <QTimer>

class QWindow;

namespace kelo {

/// While it lives, all keys of an X display go to one window, those included that the window manager would
/// act on, such as the ones that close a window. Does nothing where the application has no X display.
///
/// A grab left alone would keep the screen from being locked, so it ends by itself after half a minute
/// without a key.
class KeyboardGrab final
{
public:
    /// `window` has the keyboard's focus.
    explicit KeyboardGrab(const QWindow &window);
    ~KeyboardGrab();
    Q_DISABLE_COPY_MOVE(KeyboardGrab)

    /// To be called for each key.
    void prolong();

private:
    /// Runs while the keyboard is grabbed.
    QTimer m_limit;
};

} // namespace kelo
