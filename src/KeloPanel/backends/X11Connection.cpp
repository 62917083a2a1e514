#include "KeloPanel/backends/X11Connection.h"

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <xcb/shape.h>

namespace kelo {

namespace {

constexpr std::uint32_t longestProperty = 4096;

template<typename T> std::unique_ptr<T, decltype(&std::free)> owned(T *reply)
{
    return {reply, &std::free};
}

xcb_connection_t *connection()
{
    auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

} // namespace

bool X11Connection::isAvailable()
{
    return connection();
}

// Qt keeps to one screen of the display: the first.
X11Connection::X11Connection()
    : m_connection(connection()), m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
{
}

xcb_atom_t X11Connection::atom(const QByteArray &name) const
{
    const auto cookie = xcb_intern_atom(m_connection, false, std::uint16_t(name.size()), name.constData());
    const auto reply = owned(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void X11Connection::setAtoms(xcb_window_t window, const QByteArray &property,
                             std::initializer_list<const char *> values) const
{
    std::vector<xcb_atom_t> atoms;
    for (const char *value : values)
        atoms.push_back(atom(value));
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_ATOM, 32,
                        std::uint32_t(atoms.size()), atoms.data());
}

void X11Connection::setCardinals(xcb_window_t window, const QByteArray &property,
                                 const std::vector<std::uint32_t> &values) const
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_CARDINAL, 32,
                        std::uint32_t(values.size()), values.data());
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

QRect X11Connection::frame(xcb_window_t window) const
{
    const auto size = xcb_get_geometry(m_connection, window);
    const auto place = xcb_translate_coordinates(m_connection, window, m_root, 0, 0);
    const auto geometry = owned(xcb_get_geometry_reply(m_connection, size, nullptr));
    const auto translated = owned(xcb_translate_coordinates_reply(m_connection, place, nullptr));
    if (!geometry || !translated)
        return {};
    return {translated->dst_x, translated->dst_y, geometry->width, geometry->height};
}

void X11Connection::setInputShape(xcb_window_t window, const std::vector<xcb_rectangle_t> &shape) const
{
    if (shape.empty())
        xcb_shape_mask(m_connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, window, 0, 0, XCB_PIXMAP_NONE);
    else
        xcb_shape_rectangles(m_connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                             window, 0, 0, std::uint32_t(shape.size()), shape.data());
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

void X11Connection::raise(xcb_window_t window) const
{
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(m_connection);
}

std::optional<RunningApp> X11Connection::activeApp() const
{
    const auto active = values(m_root, "_NET_ACTIVE_WINDOW");
    if (active.empty() || active.front() == XCB_WINDOW_NONE)
        return {};
    const auto process = values(active.front(), "_NET_WM_PID");
    // WM_CLASS is two strings, each ended by a zero byte: instance and class.
    const QList<QByteArray> names = text(active.front(), XCB_ATOM_WM_CLASS).split('\0');
    return RunningApp{process.empty() ? 0 : process.front(), QString::fromLatin1(names.value(1))};
}

QByteArray X11Connection::text(xcb_window_t window, xcb_atom_t property) const
{
    const auto cookie =
        xcb_get_property(m_connection, false, window, property, XCB_ATOM_STRING, 0, longestProperty);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), qsizetype(reply->value_len)};
}

} // namespace kelo
