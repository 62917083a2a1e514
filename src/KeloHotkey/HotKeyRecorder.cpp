#include "KeloHotkey/HotKeyRecorder.h"

#include "KeloHotkey/HotKeyService.h"
#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"
#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <chrono>

namespace kelo {

using mivora::X11Connection;

namespace {

// With command alone these belong to the desktop and to editing.
constexpr std::uint32_t reservedWithCommand[] = {virtualC, virtualV,   virtualX,    virtualQ,
                                                 virtualW, virtualTab, virtualSpace};

// With control alone these edit, in every program of this desktop: a shortcut would take that from all of
// them. Letters count by what they type.
constexpr QStringView reservedLetters = u"acfnopqrstvwxyz";
constexpr std::uint32_t reservedWithControl[] = {
    virtualReturn, virtualKeypadEnter, virtualTab, virtualBackspace, virtualDelete,
    virtualInsert, virtualHome,        virtualEnd, virtualPageUp,    virtualPageDown,
    virtualLeft,   virtualRight,       virtualUp,  virtualDown};

bool isReserved(const HotKeyCombo &combo)
{
    if (combo.modifiers == commandKey)
        return std::ranges::find(reservedWithCommand, combo.keyCode) != std::end(reservedWithCommand);
    if (combo.modifiers != controlKey)
        return false;
    const auto typed = KeyboardLayout::character(std::uint16_t(combo.keyCode));
    return (typed && typed->size() == 1 && reservedLetters.contains(typed->at(0))) ||
           std::ranges::find(reservedWithControl, combo.keyCode) != std::end(reservedWithControl);
}

bool isModifierKey(std::uint32_t keyCode)
{
    return keyCode >= virtualRightCommand && keyCode <= virtualFunction;
}

bool isShortcut(const HotKeyCombo &combo)
{
    const bool isShiftAtMost = (combo.modifiers & ~std::uint32_t{shiftKey}) == 0;
    return !isShiftAtMost && !isReserved(combo);
}

void ungrabKeyboard()
{
    const X11Connection x11;
    xcb_ungrab_keyboard(x11.get(), XCB_CURRENT_TIME);
    x11.flush();
}

// Desktops turn the server's bell into their alert sound.
void ringBell()
{
    if (!X11Connection::isAvailable())
        return;
    const X11Connection x11;
    // 0: as loud as the user has set it.
    xcb_bell(x11.get(), 0);
    x11.flush();
}

} // namespace

/// While it lives, all keys of an X display go to one window, those included that the window manager would
/// act on, such as the ones that close a window. Does nothing where the application has no X display.
///
/// A grab left alone would keep the screen from being locked, so it ends by itself after half a minute
/// without a key.
class KeyboardGrab final
{
public:
    /// `window` has the keyboard's focus.
    explicit KeyboardGrab(const QWindow &window)
    {
        if (!X11Connection::isAvailable())
            return;
        const X11Connection x11;
        // Of the window with the focus: a grab of another one would be told to Qt as a loss of the focus.
        const auto cookie = xcb_grab_keyboard(x11.get(), true, xcb_window_t(window.winId()), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        // Refused while another program has a grab: then the window manager's keys stay its own.
        xcb_discard_reply(x11.get(), cookie.sequence);
        x11.flush();
        m_limit.setSingleShot(true);
        m_limit.callOnTimeout(ungrabKeyboard);
        m_limit.start(std::chrono::seconds(30));
    }

    ~KeyboardGrab()
    {
        if (m_limit.isActive())
            ungrabKeyboard();
    }
    Q_DISABLE_COPY_MOVE(KeyboardGrab)

    /// To be called for each key.
    void prolong()
    {
        if (m_limit.isActive())
            m_limit.start();
    }

private:
    /// Runs while the keyboard is grabbed.
    QTimer m_limit;
};

HotKeyRecorder::HotKeyRecorder(HotKeyService &service, const HotKeyCombo &combo,
                               const HotKeyCombo &defaultCombo, QObject *parent)
    : QObject(parent), beep(ringBell), m_service(&service), m_combo(combo), m_defaultCombo(defaultCombo)
{
    KeyboardLayout::onChange(this, [this] { Q_EMIT keyCapsChanged(); });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HotKeyRecorder::updateGrab);
}

HotKeyRecorder::~HotKeyRecorder()
{
    m_recording = false;
    updateGrab();
}

void HotKeyRecorder::setCombo(const HotKeyCombo &combo)
{
    if (combo == m_combo)
        return;
    const bool couldReset = canReset();
    m_combo = combo;
    Q_EMIT keyCapsChanged();
    if (canReset() != couldReset)
        Q_EMIT canResetChanged();
}

QString HotKeyRecorder::toolTip() const
{
    return m_recording ? tr("Press Esc to cancel") : tr("Click to record a new shortcut");
}

QString HotKeyRecorder::resetToolTip() const
{
    return tr("Reset to %1").arg(m_defaultCombo.text());
}

void HotKeyRecorder::toggle()
{
    if (m_recording)
        stop();
    else
        start();
}

void HotKeyRecorder::start()
{
    m_recording = true;
    qGuiApp->installEventFilter(this);
    updateGrab();
    Q_EMIT recordingChanged();
    Q_EMIT canResetChanged();
}

void HotKeyRecorder::stop()
{
    if (!m_recording)
        return;
    m_recording = false;
    qGuiApp->removeEventFilter(this);
    updateGrab();
    Q_EMIT recordingChanged();
    Q_EMIT canResetChanged();
}

void HotKeyRecorder::reset()
{
    if (!m_recording)
        choose(m_defaultCombo);
}

bool HotKeyRecorder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // Accepted, it becomes a key press, and no shortcut of the window is triggered by it.
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress || !watched->isWindowType())
        return QObject::eventFilter(watched, event);
    judge(static_cast<const QKeyEvent &>(*event));
    return true;
}

void HotKeyRecorder::judge(const QKeyEvent &key)
{
    if (m_grab)
        m_grab->prolong();
    // What a held key repeats was judged when it went down.
    if (key.isAutoRepeat())
        return;
    const auto keyCode = virtualKeyForScanCode(key.nativeScanCode());
    if (keyCode == virtualEscape)
        return stop();
    // The key that the modifier is for is still to come.
    if (keyCode && isModifierKey(*keyCode))
        return;
    const HotKeyCombo combo{keyCode.value_or(0), HotKeyCombo::carbonFlags(key.modifiers())};
    if (!keyCode || !isShortcut(combo))
        return beep();
    stop();
    choose(combo);
}

void HotKeyRecorder::choose(const HotKeyCombo &combo)
{
    setCombo(combo);
    Q_EMIT comboChosen(combo);
}

void HotKeyRecorder::updateGrab()
{
    const QWindow *window = QGuiApplication::focusWindow();
    const bool wantsKeys = m_recording && window;
    if (wantsKeys == bool(m_grab) || !m_service)
        return;
    if (wantsKeys) {
        m_service->suspend();
        m_grab = std::make_unique<KeyboardGrab>(*window);
    } else {
        m_grab.reset();
        m_service->resume();
    }
}

} // namespace kelo
