#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <algorithm>

namespace mivora {

namespace {

constexpr std::uint32_t longestProperty = 4096;

xcb_connection_t *connection()
{
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const auto *x11 =
        application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

// The X screen that $DISPLAY names: Qt keeps to that one.
int screenNumber()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    xcb_parse_display(nullptr, &host, &display, &screen);
    std::free(host);
    return screen;
}

} // namespace

bool X11Connection::isAvailable()
{
    return connection();
}

X11Connection::X11Connection() : m_connection(connection()), m_screenNumber(screenNumber())
{
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int number = 0; number < m_screenNumber && screen.rem > 1; ++number)
        xcb_screen_next(&screen);
    m_screen = screen.data;
}

xcb_atom_t X11Connection::atom(const QByteArray &name) const
{
    const auto cookie = xcb_intern_atom(m_connection, false, std::uint16_t(name.size()), name.constData());
    const auto reply = owned(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

QByteArray X11Connection::ofScreen(const QByteArray &selection) const
{
    return selection + QByteArray::number(m_screenNumber);
}

xcb_window_t X11Connection::selectionOwner(const QByteArray &selection) const
{
    const auto cookie = xcb_get_selection_owner(m_connection, atom(selection));
    const auto reply = owned(xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
}

void X11Connection::setProperty(xcb_window_t window, const QByteArray &property, xcb_atom_t type,
                                const std::vector<std::uint32_t> &values) const
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        std::uint32_t(values.size()), values.data());
}

void X11Connection::setText(xcb_window_t window, const QByteArray &property, const QByteArray &text) const
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), atom("UTF8_STRING"), 8,
                        std::uint32_t(text.size()), text.constData());
}

std::vector<std::uint32_t> X11Connection::values(xcb_window_t window, const QByteArray &property) const
{
    const auto cookie = xcb_get_property(m_connection, false, window, atom(property),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *first = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

bool X11Connection::hasProperty(xcb_window_t window, const QByteArray &property) const
{
    const auto cookie =
        xcb_get_property(m_connection, false, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

QByteArray X11Connection::text(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const
{
    const auto cookie = xcb_get_property(m_connection, false, window, property, type, 0, longestProperty);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), qsizetype(reply->value_len)};
}

QRect X11Connection::frame(xcb_window_t window) const
{
    const auto size = xcb_get_geometry(m_connection, window);
    const auto place = xcb_translate_coordinates(m_connection, window, root(), 0, 0);
    const auto geometry = owned(xcb_get_geometry_reply(m_connection, size, nullptr));
    const auto translated = owned(xcb_translate_coordinates_reply(m_connection, place, nullptr));
    if (!geometry || !translated)
        return {};
    return {translated->dst_x, translated->dst_y, geometry->width, geometry->height};
}

xcb_window_t X11Connection::inputFocus() const
{
    const auto reply =
        owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return reply ? reply->focus : xcb_window_t(XCB_WINDOW_NONE);
}

void X11Connection::setInputFocus(xcb_window_t window) const
{
    const auto cookie =
        xcb_set_input_focus_checked(m_connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    // Errors about a window that has gone are expected and not to be logged.
    xcb_discard_reply(m_connection, cookie.sequence);
}

void X11Connection::activate(xcb_window_t window, xcb_timestamp_t time) const
{
    constexpr std::uint32_t application = 1;
    constexpr std::uint32_t directUserAction = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = time != XCB_CURRENT_TIME ? application : directUserAction;
    message.data.data32[1] = time;
    sendToRoot(message, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
    flush();
}

// Pieces of twenty bytes, the last one with the zero that ends the text; a window of its own parts it from
// other texts.
void X11Connection::broadcastStartup(const QByteArray &text) const
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = xcb_generate_id(m_connection);
    message.type = atom("_NET_STARTUP_INFO_BEGIN");
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, message.window, root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    constexpr qsizetype pieceSize = sizeof message.data.data8;
    for (qsizetype start = 0; start <= text.size(); start += pieceSize) {
        const QByteArray piece = text.mid(start, pieceSize).leftJustified(pieceSize, '\0');
        std::copy(piece.begin(), piece.end(), message.data.data8);
        sendToRoot(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
        message.type = atom("_NET_STARTUP_INFO");
    }
    xcb_destroy_window(m_connection, message.window);
    flush();
}

void X11Connection::sendToRoot(const xcb_client_message_event_t &message, std::uint32_t receivers) const
{
    xcb_send_event(m_connection, false, root(), receivers, reinterpret_cast<const char *>(&message));
}

} // namespace mivora
