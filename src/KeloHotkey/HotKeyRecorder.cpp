#include "KeloHotkey/HotKeyRecorder.h"

#include "KeloHotkey/HotKeyService.h"
#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"
#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <QKeyEvent>
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

HotKeyRecorder::HotKeyRecorder(HotKeyService &service, const HotKeyCombo &combo,
                               const HotKeyCombo &defaultCombo, QObject *parent)
    : QObject(parent), beep(ringBell), m_service(&service), m_combo(combo), m_defaultCombo(defaultCombo)
{
    KeyboardLayout::onChange(this, [this] { Q_EMIT keyCapsChanged(); });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HotKeyRecorder::updateGrab);
    m_grabLimit.setSingleShot(true);
    connect(&m_grabLimit, &QTimer::timeout, this, [this] { m_grabbing->setKeyboardGrabEnabled(false); });
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
    if (m_grabLimit.isActive())
        m_grabLimit.start();
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

// A grab takes all keys of an X display, those included that the window manager would act on, such as the
// ones that close a window. It is that of the window with the focus: one of another would be a loss of the
// focus to Qt. Left alone it would keep the screen from being locked, so it ends by itself after half a
// minute without a key.
void HotKeyRecorder::updateGrab()
{
    QWindow *window = QGuiApplication::focusWindow();
    const bool wantsKeys = m_recording && window;
    if (wantsKeys == m_hasKeys || !m_service)
        return;
    m_hasKeys = wantsKeys;
    if (!wantsKeys) {
        if (m_grabbing && m_grabLimit.isActive())
            m_grabbing->setKeyboardGrabEnabled(false);
        m_grabLimit.stop();
        return m_service->resume();
    }
    m_service->suspend();
    // Refused while another program has a grab: then the window manager's keys stay its own.
    if (!X11Connection::isAvailable() || !window->setKeyboardGrabEnabled(true))
        return;
    m_grabbing = window;
    m_grabLimit.start(std::chrono::seconds(30));
}

} // namespace kelo
