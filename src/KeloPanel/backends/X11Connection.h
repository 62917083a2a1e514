#pragma once

#include "KeloPanel/RunningApp.h"

#include <QByteArray>
#include <QRect>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace kelo {

/// The requests that panels need, on Qt's own connection to the X server.
class X11Connection final
{
public:
    /// Whether the application talks to an X server.
    static bool isAvailable();

    /// Only where isAvailable().
    X11Connection();

    xcb_connection_t *get() const { return m_connection; }

    xcb_window_t root() const { return m_root; }

    xcb_atom_t atom(const QByteArray &name) const;

    void setAtoms(xcb_window_t window, const QByteArray &property,
                  std::initializer_list<const char *> values) const;
    void setCardinals(xcb_window_t window, const QByteArray &property,
                      const std::vector<std::uint32_t> &values) const;
    /// The 32-bit values of a property; empty when the window has none of that name.
    std::vector<std::uint32_t> values(xcb_window_t window, const QByteArray &property) const;

    /// Where the window is on the display, in pixels; invalid when it is gone.
    QRect frame(xcb_window_t window) const;

    /// Only within these pixels of the window are clicks its own; without any, all over it.
    void setInputShape(xcb_window_t window, const std::vector<xcb_rectangle_t> &shape) const;

    xcb_window_t inputFocus() const;
    /// Nothing happens when the window is gone or not to be seen.
    void setInputFocus(xcb_window_t window) const;

    /// Above all other windows of the display.
    void raise(xcb_window_t window) const;

    std::optional<RunningApp> activeApp() const;

    void flush() const { xcb_flush(m_connection); }

private:
    QByteArray text(xcb_window_t window, xcb_atom_t property) const;

    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
};

} // namespace kelo
