#pragma once

#include "KeloHotkey/HotKeyService.h"
#include "Platform/linux/X11Connection.h"

#include <QAbstractNativeEventFilter>
#include <QTimer>
#include <map>
#include <set>
#include <vector>

namespace kelo {

/// Which of an X server's eight modifiers mean what; the keymap decides that.
struct X11Modifiers
{
    std::uint16_t alt = 0;
    std::uint16_t super = 0;
    /// 0 when no key is Num Lock.
    std::uint16_t numLock = 0;

    friend bool operator==(const X11Modifiers &, const X11Modifiers &) = default;

    /// The mask of a grab for HotKeyModifier bits, without locks.
    std::uint16_t mask(std::uint32_t hotKeyModifiers) const;
};

/// Shortcuts as passive key grabs on the root window of an X server. Only where the application has one.
class X11GrabService final : public HotKeyService, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    X11GrabService();
    ~X11GrabService() override;

    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override;
    void unregisterHotKey(std::uint32_t id) override;
    void suspend() override;
    void resume() override;
    HotKeyState state() const override;
    void retry() override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    /// A grab of one key as the server and its events name it, with no lock modifiers in the mask.
    struct Key
    {
        xcb_keycode_t code = 0;
        std::uint16_t mask = 0;

        friend auto operator<=>(const Key &, const Key &) = default;
    };

    std::optional<Key> key(const HotKeyCombo &combo) const;
    std::vector<std::uint16_t> masks(const Key &key) const;
    bool grab(const Key &key);
    void ungrab(const Key &key);
    void grabAll();
    void ungrabAll();
    void adoptModifiers();
    bool keyPressed(const xcb_key_press_event_t &event);
    void keyReleased(const xcb_key_release_event_t &event);

    mivora::X11Connection m_x11;
    X11Modifiers m_modifiers;
    /// Collects the burst of events that a change of the keymap is.
    QTimer m_keymapTimer;
    std::map<std::uint32_t, HotKeyCombo> m_registered;
    /// What somebody else had when it was to be grabbed again.
    std::set<std::uint32_t> m_lost;
    bool m_isSuspended = false;
    /// The grabbed key that is down, and when the last one went up: both tell repeats from presses.
    xcb_keycode_t m_held = 0;
    xcb_keycode_t m_released = 0;
    xcb_timestamp_t m_releaseTime = 0;
};

} // namespace kelo
