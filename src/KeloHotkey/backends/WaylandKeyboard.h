#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>

struct wl_message;
union wl_argument;

namespace kelo {

/// What a Wayland compositor tells of the keyboard (wl_keyboard of the core protocol), on the connection of
/// Qt. Nothing where there is none, or Qt doesn't give it away: before 6.5. Lives as long as the application.
class WaylandKeyboard final
{
public:
    /// Waits for one round trip to the compositor. `changed` is called from then on.
    explicit WaylandKeyboard(std::function<void()> changed);
    Q_DISABLE_COPY_MOVE(WaylandKeyboard)

    /// The keymap as XKB writes it; empty when it isn't known.
    const QByteArray &keymap() const { return m_keymap; }

    /// The layout of the keymap that the user has switched to, known while the program has the keyboard.
    std::uint32_t active() const { return m_active; }

private:
    static int handle(const void *self, void *keyboard, std::uint32_t event, const wl_message *message,
                      wl_argument *arguments);

    std::function<void()> m_changed;
    QByteArray m_keymap;
    std::uint32_t m_active = 0;
};

} // namespace kelo
