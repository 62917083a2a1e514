#include "KeloHotkey/HotKeyRecorder.h"

#include "KeloHotkey/HotKeyService.h"
#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"
#include "KeloHotkey/backends/KeyboardGrab.h"
#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace kelo {

namespace {

// With command alone these belong to the desktop and to editing.
constexpr std::uint32_t reservedWithCommand[] = {virtualC, virtualV,   virtualX,    virtualQ,
                                                 virtualW, virtualTab, virtualSpace};

bool isModifierKey(std::uint32_t keyCode)
{
    return keyCode >= virtualRightCommand && keyCode <= virtualFunction;
}

bool isShortcut(const HotKeyCombo &combo)
{
    const bool isShiftAtMost = (combo.modifiers & ~std::uint32_t{shiftKey}) == 0;
    const bool isReserved =
        combo.modifiers == commandKey &&
        std::ranges::find(reservedWithCommand, combo.keyCode) != std::end(reservedWithCommand);
    return !isShiftAtMost && !isReserved;
}

// Desktops turn the server's bell into their alert sound.
void ringBell()
{
    if (!mivora::X11Connection::isAvailable())
        return;
    const mivora::X11Connection x11;
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
    return tr("Reset to %1").arg(m_defaultCombo.displayString());
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
