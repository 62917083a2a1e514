#include "KeloMenuBar/backends/TrayBackend.h"

#include "KeloMenuBar/backends/Presentation.h"

#include <QCoreApplication>
#include <utility>

namespace kelo {

namespace {

quint8 depthOfVisual(const xcb_screen_t *screen, xcb_visualid_t visual)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem > 0; xcb_depth_next(&depth)) {
        for (auto type = xcb_depth_visuals_iterator(depth.data); type.rem > 0; xcb_visualtype_next(&type)) {
            if (type.data->visual_id == visual)
                return depth.data->depth;
        }
    }
    return 0;
}

// Trays give a window the room that it asks for here, and hide those that ask for none (ICCCM, 4.1.2.3).
std::vector<std::uint32_t> minimumSize(int size)
{
    constexpr std::uint32_t hasMinimumSize = 1 << 4;
    std::vector<std::uint32_t> hints(18);
    hints[0] = hasMinimumSize;
    hints[5] = hints[6] = std::uint32_t(size);
    return hints;
}

} // namespace

TrayBackend::TrayBackend(const StatusItemState &state, std::function<void(QPoint)> openMenu,
                         std::function<void()> changed)
    : m_state(state), m_openMenu(std::move(openMenu)), m_changed(std::move(changed))
{
    // Qt already listens to the root window, where a new tray announces itself.
    QCoreApplication::instance()->installNativeEventFilter(this);
    find();
}

void TrayBackend::find()
{
    xcb_window_t owner = m_x11.selectionOwner(m_selection);
    // It could end before its end can be noticed; only an owner that is still there afterwards is one.
    for (xcb_window_t before = XCB_WINDOW_NONE; owner != before; owner = m_x11.selectionOwner(m_selection)) {
        before = owner;
        if (owner != XCB_WINDOW_NONE) {
            const quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(m_x11.get(), owner, XCB_CW_EVENT_MASK, &mask);
        }
    }
    // An owner that has gone says so itself, before anybody can find another one.
    if (std::exchange(m_tray, owner) != owner)
        dock();
}

void TrayBackend::update()
{
    if (!m_state.isVisible)
        m_window.reset();
    else if (!m_window)
        return dock();
    if (!m_window)
        return;
    const NotifierProperties shown = notifierProperties(m_state, Presentation::Square);
    m_window->setTitle(shown.title);
    m_window->setPicture(*shown.picture);
}

void TrayBackend::dock()
{
    if (!hasTray() || !m_state.isVisible)
        return;
    m_window = std::make_unique<TrayWindow>(
        hasAlpha() ? TrayWindow::Background::Transparent : TrayWindow::Background::Cut, m_openMenu);
    m_window->create();
    update();
    askToDock();
}

bool TrayBackend::hasAlpha() const
{
    const auto visual = m_x11.values(m_tray, "_NET_SYSTEM_TRAY_VISUAL");
    return !visual.empty() && depthOfVisual(m_x11.screen(), visual.front()) == 32;
}

// The tray says that it has taken the window in by reparenting it.
void TrayBackend::askToDock() const
{
    const auto window = xcb_window_t(m_window->winId());
    m_x11.setProperty(window, "WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS,
                      minimumSize(qRound(m_window->height() * m_window->devicePixelRatio())));
    // Version 0 of XEmbed; mapped by the tray as soon as it is in.
    m_x11.setProperty(window, "_XEMBED_INFO", m_x11.atom("_XEMBED_INFO"), {0, 1});

    constexpr std::uint32_t requestDock = 0;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_tray;
    message.type = m_x11.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window;
    xcb_send_event(m_x11.get(), false, m_tray, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    m_x11.flush();
}

bool TrayBackend::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (event->response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto *client = static_cast<const xcb_client_message_event_t *>(message);
        if (client->type == m_managerMessage && client->data.data32[1] == m_selectionAtom) {
            find();
            m_changed();
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (static_cast<const xcb_destroy_notify_event_t *>(message)->window == m_tray) {
            // First of all: the next tray's window may have the same number.
            m_tray = XCB_WINDOW_NONE;
            m_window.reset();
            find();
            m_changed();
        }
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto *reparent = static_cast<const xcb_reparent_notify_event_t *>(message);
        // Shown any earlier, the window would be seen outside of the tray for a moment.
        if (m_window && reparent->window == m_window->winId() && reparent->parent != m_x11.root())
            m_window->show();
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace kelo
