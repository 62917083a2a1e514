#pragma once

#include <QSize>
#include <optional>
#include <xcb/xcb.h>

/// An XEmbed tray on the default display: owns the tray's selection and takes windows in, as stalonetray
/// would.
class FakeTray final
{
public:
    /// Announces itself to the programs that wait for a tray.
    FakeTray();
    /// Gives the windows back and disappears.
    ~FakeTray();
    Q_DISABLE_COPY_MOVE(FakeTray)

    /// Takes in whoever has asked since the last call. Returns the window last taken in, if it is still
    /// there.
    std::optional<xcb_window_t> icon();

    /// The size that the icon asks for, by its WM_NORMAL_HINTS.
    QSize wantedSize();

    /// Whether the icon is mapped and so to be seen.
    bool showsIcon();

    /// Presses and releases the left button on the icon.
    void click();

private:
    void take(xcb_window_t window);

    xcb_connection_t *m_connection = nullptr;
    xcb_screen_t *m_screen = nullptr;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_window_t m_icon = XCB_WINDOW_NONE;
};
