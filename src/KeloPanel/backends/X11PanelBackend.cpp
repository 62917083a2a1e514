#include "KeloPanel/backends/X11PanelBackend.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <xcb/shape.h>

namespace kelo {

namespace {

constexpr std::uint32_t allDesktops = 0xffffffff;

xcb_window_t idOf(const QWindow &window)
{
    return xcb_window_t(window.winId());
}

// XWayland names its outputs so until version 23, which can also be asked for an extension.
bool runsUnderWayland()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           (screen && screen->name().startsWith(QLatin1String("XWAYLAND")));
}

// By the edges of the region's rectangles: rounded sizes would leave gaps between them.
std::vector<xcb_rectangle_t> inPixels(const QRegion &region, double pixelRatio)
{
    std::vector<xcb_rectangle_t> rects;
    for (const QRect &rect : region) {
        const auto x = std::int16_t(rect.x() * pixelRatio);
        const auto y = std::int16_t(rect.y() * pixelRatio);
        rects.push_back({x, y, std::uint16_t((rect.x() + rect.width()) * pixelRatio - x),
                         std::uint16_t((rect.y() + rect.height()) * pixelRatio - y)});
    }
    return rects;
}

} // namespace

X11PanelBackend::X11PanelBackend() : m_isXWayland(runsUnderWayland())
{
    if (!m_isXWayland)
        return;
    m_stacking = m_x11.atom("_NET_CLIENT_LIST_STACKING");
    QCoreApplication::instance()->installNativeEventFilter(this);
}

void X11PanelBackend::prepare(QWindow &window)
{
    window.setFlags(window.flags() | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                    Qt::BypassWindowManagerHint);
    window.create();
    const xcb_window_t id = idOf(window);
    // Managers leave the window alone; task bars, pagers and screen recorders read these all the same.
    std::vector<std::uint32_t> states;
    for (const char *state : {"ABOVE", "STICKY", "SKIP_TASKBAR", "SKIP_PAGER"})
        states.push_back(m_x11.atom(QByteArray("_NET_WM_STATE_") + state));
    m_x11.setProperty(id, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
    m_x11.setProperty(id, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {allDesktops});
    setType(window, WindowType::notification);
    window.installEventFilter(this);
}

void X11PanelBackend::orderFront(QWindow &window, const PanelPosition &position, const FloatingFrame &frame)
{
    shape(window, frame);
    setType(window, WindowType::notification);
    window.setGeometry(QRect(position.origin, frame.windowSize));
    window.show();
    window.raise();
    if (m_isXWayland)
        m_onTop = idOf(window);
}

void X11PanelBackend::takeKeyboard(QWindow &window)
{
    if (const xcb_window_t focus = m_x11.inputFocus(); focus != idOf(window)) {
        m_previousFocus = focus;
        m_x11.setInputFocus(idOf(window));
    }
    if (m_isXWayland && !m_hasGrab) {
        const auto cookie = xcb_grab_keyboard(m_x11.get(), true, idOf(window), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_discard_reply(m_x11.get(), cookie.sequence);
        m_hasGrab = true;
    }
    m_x11.flush();
}

// sway takes the focus back, and the keys come by the grab. Qt still calls the window active for 0.4 seconds
// after it has lost the focus, when KWin goes on to hand it keys.
bool X11PanelBackend::hasKeyboard(const QWindow &window) const
{
    return m_isXWayland ? m_hasGrab : PanelBackend::hasKeyboard(window);
}

void X11PanelBackend::orderOut(QWindow &window)
{
    m_onTop = XCB_WINDOW_NONE;
    returnKeyboard(window);
    window.hide();
}

bool X11PanelBackend::eventFilter(QObject *watched, QEvent *event)
{
    auto &window = static_cast<QWindow &>(*watched);
    if (event->type() == QEvent::MouseButtonPress)
        takeKeyboard(window);
    else if (event->type() == QEvent::MouseMove && m_isXWayland && m_type == WindowType::notification)
        setType(window, WindowType::normal);
    else if (event->type() == QEvent::Leave && m_isXWayland)
        pointerLeft(window);
    return QObject::eventFilter(watched, event);
}

// What compositors show on top isn't on top for the X server once they raise a window of another X11 program:
// clicks on the panel would go to that one. The list tells of it; the panel itself is not in it.
bool X11PanelBackend::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if (m_onTop == XCB_WINDOW_NONE || (event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return false;
    if (static_cast<const xcb_property_notify_event_t *>(message)->atom == m_stacking) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_x11.get(), m_onTop, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        m_x11.flush();
    }
    return false;
}

void X11PanelBackend::setType(const QWindow &window, WindowType type)
{
    m_type = type;
    m_x11.setProperty(idOf(window), "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                      {m_x11.atom(type == WindowType::normal ? "_NET_WM_WINDOW_TYPE_NORMAL"
                                                             : "_NET_WM_WINDOW_TYPE_NOTIFICATION")});
    m_x11.flush();
}

// Without a compositor the window itself has the rounded shape. With one, that is the part that takes clicks,
// and behind which the desktop may be blurred: the shadow around it is but seen. Both are in pixels of the
// device.
void X11PanelBackend::shape(QWindow &window, const FloatingFrame &frame)
{
    const QRegion rounded = GlassSurface::cardRegion(frame);
    window.setMask(frame.shadowByWindow ? rounded : QRegion());
    const std::vector<xcb_rectangle_t> card =
        frame.shadowByWindow ? std::vector<xcb_rectangle_t>() : inPixels(rounded, window.devicePixelRatio());
    std::vector<std::uint32_t> blurred;
    for (const auto &[x, y, width, height] : card)
        blurred.insert(blurred.end(), {std::uint32_t(x), std::uint32_t(y), width, height});
    m_x11.setProperty(idOf(window), "_KDE_NET_WM_BLUR_BEHIND_REGION", XCB_ATOM_CARDINAL, blurred);
    // A panel that is only looked at takes no clicks at all.
    if (!window.flags().testFlag(Qt::WindowTransparentForInput))
        setInputShape(window, card);
}

void X11PanelBackend::setInputShape(const QWindow &window, const std::vector<xcb_rectangle_t> &shape)
{
    const xcb_window_t id = idOf(window);
    if (shape.empty())
        xcb_shape_mask(m_x11.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, id, 0, 0, XCB_PIXMAP_NONE);
    else
        xcb_shape_rectangles(m_x11.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                             id, 0, 0, std::uint32_t(shape.size()), shape.data());
}

// The compositor still counts the window as the one with the keyboard; only unmapping makes it look again.
// Mapping brings an Enter of a pointer that the X server doesn't know to be gone: that's why moves are waited
// for.
void X11PanelBackend::pointerLeft(QWindow &window)
{
    setType(window, WindowType::notification);
    if (!m_hasGrab || QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    returnKeyboard(window);
    xcb_unmap_window(m_x11.get(), idOf(window));
    xcb_map_window(m_x11.get(), idOf(window));
    m_x11.flush();
}

void X11PanelBackend::returnKeyboard(const QWindow &window)
{
    if (m_hasGrab)
        xcb_ungrab_keyboard(m_x11.get(), XCB_CURRENT_TIME);
    m_hasGrab = false;
    // A compositor gives the keyboard to whom it likes when the window that has it is unmapped; given away
    // before, GNOME's leaves it with nobody.
    if (!m_isXWayland && m_previousFocus != XCB_WINDOW_NONE && m_x11.inputFocus() == idOf(window))
        m_x11.setInputFocus(m_previousFocus);
    m_previousFocus = XCB_WINDOW_NONE;
    m_x11.flush();
}

} // namespace kelo
