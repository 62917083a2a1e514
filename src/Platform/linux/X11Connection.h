#pragma once

#include <QByteArray>
#include <QRect>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace mivora {

/// An answer of the X server, which the caller frees.
template<typename Reply> std::unique_ptr<Reply, decltype(&std::free)> owned(Reply *reply)
{
    return {reply, &std::free};
}

/// Qt's own connection to the X server, and what more than one module asks of it. Windows may have gone when
/// they are asked about: then there is nothing, and no word of it in the log.
class X11Connection final
{
public:
    /// Whether the application talks to an X server.
    static bool isAvailable();

    /// Only where `isAvailable`.
    X11Connection();

    xcb_connection_t *get() const { return m_connection; }

    const xcb_screen_t *screen() const { return m_screen; }

    xcb_window_t root() const { return m_screen->root; }

    xcb_atom_t atom(const QByteArray &name) const;

    /// The name of a selection of which each screen has its own: "_NET_WM_CM_S" with the screen's number.
    QByteArray ofScreen(const QByteArray &selection) const;
    /// The owner of the selection of this name; XCB_WINDOW_NONE when there is none.
    xcb_window_t selectionOwner(const QByteArray &selection) const;

    /// Gives the window a property of 32-bit values.
    void setProperty(xcb_window_t window, const QByteArray &property, xcb_atom_t type,
                     const std::vector<std::uint32_t> &values) const;
    /// Gives the window a property that is text in UTF-8.
    void setText(xcb_window_t window, const QByteArray &property, const QByteArray &text) const;
    /// The 32-bit values of a property; empty when the window has none of that name.
    std::vector<std::uint32_t> values(xcb_window_t window, const QByteArray &property) const;
    bool hasProperty(xcb_window_t window, const QByteArray &property) const;
    /// A property that is text, or of another `type` made of bytes.
    QByteArray text(xcb_window_t window, xcb_atom_t property, xcb_atom_t type = XCB_ATOM_STRING) const;

    /// Where the window is on the display, in pixels.
    QRect frame(xcb_window_t window) const;

    xcb_window_t inputFocus() const;
    /// Nothing happens when the window is not to be seen.
    void setInputFocus(xcb_window_t window) const;

    /// Has the window manager bring the window to the front, for what the user did at `time` (EWMH,
    /// _NET_ACTIVE_WINDOW). A time of 0 is not known: then it has to take our word that the user wants it.
    void activate(xcb_window_t window, xcb_timestamp_t time) const;
    /// Tells whoever shows what is being started (Startup Notification Protocol).
    void broadcastStartup(const QByteArray &message) const;

    void flush() const { xcb_flush(m_connection); }

private:
    void sendToRoot(const xcb_client_message_event_t &message, std::uint32_t receivers) const;

    xcb_connection_t *m_connection = nullptr;
    int m_screenNumber = 0;
    xcb_screen_t *m_screen = nullptr;
};

} // namespace mivora
