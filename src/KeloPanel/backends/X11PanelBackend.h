#pragma once

#include "KeloPanel/backends/PanelBackend.h"
#include "Platform/linux/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace kelo {

/// A window that no window manager places, decorates or activates (override-redirect). It takes the keyboard
/// by itself when it is clicked, and gives it back.
///
/// Under XWayland the compositor decides about the keyboard, by the type of the window: notifications never
/// get it. So the window is an ordinary one while the pointer moves on it, and a notification all other time.
class X11PanelBackend final : public QObject, public QAbstractNativeEventFilter, public PanelBackend
{
    Q_OBJECT

public:
    X11PanelBackend();

    void prepare(QWindow &window) override;
    void orderFront(QWindow &window, const PanelPosition &position, const FloatingFrame &frame) override;
    void takeKeyboard(QWindow &window) override;
    bool hasKeyboard(const QWindow &window) const override;
    void orderOut(QWindow &window) override;

    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class WindowType { notification, normal };

    void setType(const QWindow &window, WindowType type);
    void shape(QWindow &window, const FloatingFrame &frame);
    void setInputShape(const QWindow &window, const std::vector<xcb_rectangle_t> &shape);
    void pointerLeft(QWindow &window);
    void returnKeyboard(const QWindow &window);

    mivora::X11Connection m_x11;
    bool m_isXWayland = false;
    WindowType m_type = WindowType::notification;
    bool m_hasGrab = false;
    xcb_atom_t m_stacking = XCB_ATOM_NONE;
    /// Under XWayland, while it is on screen: the window whose place above the others is to be kept.
    xcb_window_t m_onTop = XCB_WINDOW_NONE;
    xcb_window_t m_previousFocus = XCB_WINDOW_NONE;
};

} // namespace kelo
