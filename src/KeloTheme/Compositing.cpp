#include "KeloTheme/Compositing.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QLatin1String>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace kelo {

namespace {

template<typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

xcb_connection_t *x11Connection()
{
    auto *x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t existingAtom(xcb_connection_t *connection, const QByteArray &name)
{
    const auto cookie = xcb_intern_atom(connection, true, std::uint16_t(name.size()), name.constData());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr),
                                               &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// Qt keeps to one screen of the display: the first.
bool hasCompositingManager(xcb_connection_t *connection)
{
    const xcb_atom_t selection = existingAtom(connection, "_NET_WM_CM_S0");
    if (selection == XCB_ATOM_NONE)
        return false;
    const auto cookie = xcb_get_selection_owner(connection, selection);
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr), &std::free);
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool rootHasProperty(xcb_connection_t *connection, const QByteArray &name)
{
    const xcb_atom_t wanted = existingAtom(connection, name);
    if (wanted == XCB_ATOM_NONE)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_get_property(connection, false, root, wanted, XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr),
                                                &std::free);
    return reply && reply->type != XCB_ATOM_NONE;
}

} // namespace

bool desktopComposites()
{
    const QByteArray wanted = qgetenv("MIVORA_COMPOSITING");
    if (wanted == "0" || wanted == "1")
        return wanted == "1";
    xcb_connection_t *connection = x11Connection();
    return !connection || hasCompositingManager(connection);
}

bool desktopBlurs()
{
    xcb_connection_t *connection = x11Connection();
    return connection && rootHasProperty(connection, "_KDE_NET_WM_BLUR_BEHIND_REGION");
}

} // namespace kelo
