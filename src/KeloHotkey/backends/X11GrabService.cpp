#include "KeloHotkey/backends/X11GrabService.h"

#include "KeloHotkey/VirtualKeys.h"
#include "KeloHotkey/backends/Keyboard.h"
#include "Platform/Activation.h"

#include <QCoreApplication>
#include <algorithm>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace kelo {

namespace {

// Alt and Super have their customary modifiers when no key is theirs.
X11Modifiers currentModifiers()
{
    const LatinLayout &layout = Keyboard::instance().layout();
    return {
        .alt = std::uint16_t(layout.modifierOf(XKB_KEY_Alt_L).value_or(XCB_MOD_MASK_1)),
        .super = std::uint16_t(layout.modifierOf(XKB_KEY_Super_L).value_or(XCB_MOD_MASK_4)),
        .numLock = std::uint16_t(layout.modifierOf(XKB_KEY_Num_Lock).value_or(0)),
    };
}

} // namespace

std::uint16_t X11Modifiers::mask(std::uint32_t hotKeyModifiers) const
{
    std::uint16_t mask = 0;
    if (hotKeyModifiers & commandKey)
        mask |= super;
    if (hotKeyModifiers & shiftKey)
        mask |= XCB_MOD_MASK_SHIFT;
    if (hotKeyModifiers & optionKey)
        mask |= alt;
    if (hotKeyModifiers & controlKey)
        mask |= XCB_MOD_MASK_CONTROL;
    return mask;
}

X11GrabService::X11GrabService() : m_modifiers(currentModifiers())
{
    m_keymapTimer.setSingleShot(true);
    connect(&Keyboard::instance(), &Keyboard::changed, &m_keymapTimer, qOverload<>(&QTimer::start));
    connect(&m_keymapTimer, &QTimer::timeout, this, &X11GrabService::adoptModifiers);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11GrabService::~X11GrabService()
{
    // The display may be gone with the application.
    if (mivora::X11Connection::isAvailable())
        ungrabAll();
}

bool X11GrabService::registerHotKey(const HotKeyCombo &combo, std::uint32_t id)
{
    const auto wanted = key(combo);
    // The server lets a client grab the same key twice, and a stray key code too.
    const bool isTaken = std::ranges::any_of(
        m_registered, [&](const auto &registered) { return key(registered.second) == wanted; });
    if (!wanted || isTaken || !grab(*wanted))
        return false;
    m_registered.emplace(id, combo);
    if (m_isSuspended)
        ungrab(*wanted);
    Q_EMIT stateChanged();
    return true;
}

void X11GrabService::unregisterHotKey(std::uint32_t id)
{
    const auto found = m_registered.find(id);
    if (found == m_registered.end())
        return;
    ungrab(*key(found->second));
    m_registered.erase(found);
    m_lost.erase(id);
    Q_EMIT stateChanged();
}

void X11GrabService::suspend()
{
    ungrabAll();
    m_isSuspended = true;
}

void X11GrabService::resume()
{
    if (!m_isSuspended)
        return;
    m_isSuspended = false;
    grabAll();
}

HotKeyState X11GrabService::state() const
{
    using enum HotKeyState::Kind;
    if (m_registered.empty())
        return {};
    const auto &[id, combo] = *m_registered.rbegin();
    return {m_lost.contains(id) ? taken : registered, combo.text()};
}

void X11GrabService::retry()
{
    if (!m_isSuspended && !m_lost.empty())
        grabAll();
}

std::optional<X11GrabService::Key> X11GrabService::key(const HotKeyCombo &combo) const
{
    const auto code = xKeyCode(combo.keyCode);
    if (!code)
        return std::nullopt;
    return Key{*code, m_modifiers.mask(combo.modifiers)};
}

// A grab is for an exact state, so there is one for each state of the locks.
std::vector<std::uint16_t> X11GrabService::masks(const Key &key) const
{
    std::vector<std::uint16_t> masks{key.mask, std::uint16_t(key.mask | XCB_MOD_MASK_LOCK)};
    if (m_modifiers.numLock) {
        for (const std::size_t index : {0, 1})
            masks.push_back(masks[index] | m_modifiers.numLock);
    }
    return masks;
}

bool X11GrabService::grab(const Key &key)
{
    std::vector<xcb_void_cookie_t> requests;
    for (const std::uint16_t mask : masks(key))
        requests.push_back(xcb_grab_key_checked(m_x11.get(), false, m_x11.root(), mask, key.code,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isGrabbed = true;
    for (const xcb_void_cookie_t request : requests) {
        if (mivora::owned(xcb_request_check(m_x11.get(), request)))
            isGrabbed = false;
    }
    if (!isGrabbed)
        ungrab(key);
    return isGrabbed;
}

void X11GrabService::ungrab(const Key &key)
{
    for (const std::uint16_t mask : masks(key))
        xcb_ungrab_key(m_x11.get(), key.code, m_x11.root(), mask);
    m_x11.flush();
    m_held = 0;
}

void X11GrabService::grabAll()
{
    std::set<std::uint32_t> lost;
    for (const auto &[id, combo] : m_registered) {
        if (!grab(*key(combo)))
            lost.insert(id);
    }
    if (std::exchange(m_lost, lost) != lost)
        Q_EMIT stateChanged();
}

void X11GrabService::ungrabAll()
{
    for (const auto &[id, combo] : m_registered)
        ungrab(*key(combo));
}

// Physical keys keep their codes in every keymap, but the modifiers may have moved.
void X11GrabService::adoptModifiers()
{
    const X11Modifiers modifiers = currentModifiers();
    if (modifiers == m_modifiers)
        return retry();
    ungrabAll();
    m_modifiers = modifiers;
    if (!m_isSuspended)
        grabAll();
}

bool X11GrabService::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int type = event->response_type & 0x7f;
    if (type == XCB_KEY_PRESS)
        return keyPressed(*static_cast<const xcb_key_press_event_t *>(message));
    if (type == XCB_KEY_RELEASE)
        keyReleased(*static_cast<const xcb_key_release_event_t *>(message));
    return false;
}

bool X11GrabService::keyPressed(const xcb_key_press_event_t &event)
{
    const std::uint16_t relevant = m_modifiers.mask(commandKey | shiftKey | optionKey | controlKey);
    const Key pressedKey{event.detail, std::uint16_t(event.state & relevant)};
    const auto found = std::ranges::find_if(
        m_registered, [&](const auto &registered) { return key(registered.second) == pressedKey; });
    if (m_isSuspended || event.event != m_x11.root() || found == m_registered.end())
        return false;
    // A held key repeats as presses, or as a release and a press at the same time.
    const bool isRepeat =
        m_held == event.detail || (m_released == event.detail && m_releaseTime == event.time);
    m_held = event.detail;
    if (!isRepeat) {
        mivora::holdActivation({.time = event.time});
        Q_EMIT pressed(found->first);
    }
    return true;
}

void X11GrabService::keyReleased(const xcb_key_release_event_t &event)
{
    if (event.detail != m_held)
        return;
    m_held = 0;
    m_released = event.detail;
    m_releaseTime = event.time;
}

} // namespace kelo
