#include "KeloMenuBar/backends/TrayManager.h"

#include <QGuiApplication>
#include <array>
#include <cstdlib>
#include <memory>
#include <utility>

namespace kelo {

namespace {

// What answers of the X server are freed with.
struct Free
{
    void operator()(void *reply) const { std::free(reply); }
};

template<typename Reply> using ReplyPtr = std::unique_ptr<Reply, Free>;

// The X screen that $DISPLAY names; -1 if it names none.
int screenNumber()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    const bool isParsed = xcb_parse_display(nullptr, &host, &display, &screen) != 0;
    std::free(host);
    return isParsed ? screen : -1;
}

xcb_screen_t *screenOfDisplay(xcb_connection_t *connection, int number)
{
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screen.rem > 1; --number)
        xcb_screen_next(&screen);
    return screen.data;
}

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
void setMinimumSize(xcb_connection_t *connection, xcb_window_t window, int size)
{
    constexpr quint32 hasMinimumSize = 1 << 4;
    std::array<quint32, 18> hints{hasMinimumSize};
    hints[5] = hints[6] = static_cast<quint32>(size);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
}

} // namespace

TrayManager::TrayManager()
{
    const auto *application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    m_connection = application ? application->connection() : nullptr;
}

void TrayManager::start()
{
    const int number = screenNumber();
    if (!m_connection || number < 0)
        return;
    m_screen = screenOfDisplay(m_connection, number);
    m_selection = atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(number));
    m_managerMessage = atom("MANAGER");
    // Qt already listens to the root window, where a new manager announces itself.
    QCoreApplication::instance()->installNativeEventFilter(this);
    find();
}

xcb_atom_t TrayManager::atom(const QByteArray &name) const
{
    const auto cookie =
        xcb_intern_atom(m_connection, false, static_cast<quint16>(name.size()), name.constData());
    const ReplyPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t TrayManager::selectionOwner() const
{
    const auto cookie = xcb_get_selection_owner(m_connection, m_selection);
    const ReplyPtr<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void TrayManager::find()
{
    xcb_window_t owner = selectionOwner();
    // It could end before its end can be noticed; only an owner that is still there afterwards is one.
    for (xcb_window_t before = XCB_WINDOW_NONE; owner != before; owner = selectionOwner()) {
        before = owner;
        if (owner != XCB_WINDOW_NONE) {
            const quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(m_connection, owner, XCB_CW_EVENT_MASK, &mask);
        }
    }
    if (std::exchange(m_owner, owner) == owner)
        return;
    // An owner that has gone says so itself, before anybody can find another one.
    if (owner != XCB_WINDOW_NONE)
        Q_EMIT appeared();
}

void TrayManager::forget()
{
    // First of all: the next tray's window may have the same number.
    m_owner = XCB_WINDOW_NONE;
    Q_EMIT gone();
    find();
}

bool TrayManager::hasAlpha() const
{
    const auto cookie = xcb_get_property(m_connection, false, m_owner, atom("_NET_SYSTEM_TRAY_VISUAL"),
                                         XCB_ATOM_VISUALID, 0, 1);
    const ReplyPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < 4)
        return false;
    return depthOfVisual(m_screen, *static_cast<xcb_visualid_t *>(xcb_get_property_value(reply.get()))) == 32;
}

void TrayManager::dock(xcb_window_t window, int iconSize) const
{
    // Version 0 of XEmbed; mapped by the tray as soon as it is in.
    const quint32 info[] = {0, 1};
    setMinimumSize(m_connection, window, iconSize);
    const xcb_atom_t infoAtom = atom("_XEMBED_INFO");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, infoAtom, infoAtom, 32, 2, info);

    constexpr quint32 requestDock = 0;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_owner;
    message.type = atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window;
    xcb_send_event(m_connection, false, m_owner, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}

bool TrayManager::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (event->response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto *client = static_cast<const xcb_client_message_event_t *>(message);
        if (client->type == m_managerMessage && client->data.data32[1] == m_selection)
            find();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (static_cast<const xcb_destroy_notify_event_t *>(message)->window == m_owner)
            forget();
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto *reparent = static_cast<const xcb_reparent_notify_event_t *>(message);
        if (reparent->parent != m_screen->root)
            Q_EMIT docked(reparent->window);
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace kelo
