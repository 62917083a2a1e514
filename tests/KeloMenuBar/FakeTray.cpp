#include "FakeTray.h"

#include "Platform/linux/X11Connection.h"

using mivora::owned;

namespace {

xcb_atom_t atom(xcb_connection_t *connection, const QByteArray &name)
{
    const auto cookie =
        xcb_intern_atom(connection, false, static_cast<quint16>(name.size()), name.constData());
    return owned(xcb_intern_atom_reply(connection, cookie, nullptr))->atom;
}

} // namespace

FakeTray::FakeTray() : m_connection(xcb_connect(nullptr, nullptr))
{
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_window = xcb_generate_id(m_connection);
    const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_screen->root, 100, 0, 24, 24, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_map_window(m_connection, m_window);
    const xcb_atom_t selection = atom(m_connection, "_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(m_connection, m_window, selection, XCB_CURRENT_TIME);

    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_screen->root;
    message.type = atom(m_connection, "MANAGER");
    message.data.data32[1] = selection;
    message.data.data32[2] = m_window;
    xcb_send_event(m_connection, false, m_screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}

FakeTray::~FakeTray()
{
    if (m_icon != XCB_WINDOW_NONE)
        xcb_reparent_window(m_connection, m_icon, m_screen->root, 0, 0);
    xcb_destroy_window(m_connection, m_window);
    xcb_disconnect(m_connection);
}

std::optional<xcb_window_t> FakeTray::icon()
{
    const xcb_atom_t opcode = atom(m_connection, "_NET_SYSTEM_TRAY_OPCODE");
    while (const auto event = owned(xcb_poll_for_event(m_connection))) {
        const int type = event->response_type & 0x7f;
        const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
        const auto *destroyed = reinterpret_cast<const xcb_destroy_notify_event_t *>(event.get());
        if (type == XCB_CLIENT_MESSAGE && message->type == opcode && message->data.data32[1] == 0)
            take(message->data.data32[2]);
        if (type == XCB_DESTROY_NOTIFY && destroyed->window == m_icon)
            m_icon = XCB_WINDOW_NONE;
    }
    return m_icon == XCB_WINDOW_NONE ? std::nullopt : std::optional(m_icon);
}

void FakeTray::take(xcb_window_t window)
{
    m_icon = window;
    const quint32 size[] = {24, 24};
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    xcb_reparent_window(m_connection, window, m_window, 0, 0);
    xcb_flush(m_connection);
}

QSize FakeTray::wantedSize()
{
    const auto cookie = xcb_get_property(m_connection, false, m_icon, XCB_ATOM_WM_NORMAL_HINTS,
                                         XCB_ATOM_WM_SIZE_HINTS, 0, 18);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < 7 * 4)
        return {};
    const auto *hints = static_cast<const qint32 *>(xcb_get_property_value(reply.get()));
    return {hints[5], hints[6]};
}

bool FakeTray::showsIcon()
{
    if (!icon())
        return false;
    const auto cookie = xcb_get_window_attributes(m_connection, m_icon);
    const auto reply = owned(xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void FakeTray::click()
{
    xcb_button_press_event_t event{};
    event.detail = XCB_BUTTON_INDEX_1;
    event.root = m_screen->root;
    event.event = m_icon;
    event.root_x = 110;
    event.root_y = 10;
    event.event_x = 10;
    event.event_y = 10;
    event.same_screen = 1;
    event.response_type = XCB_BUTTON_PRESS;
    xcb_send_event(m_connection, false, m_icon, XCB_EVENT_MASK_BUTTON_PRESS,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(m_connection);
}
