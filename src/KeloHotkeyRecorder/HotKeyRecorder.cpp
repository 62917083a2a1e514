#include "KeloHotkeyRecorder/HotKeyRecorder.h"

#include "KeloHotkey/HotKeyJudgement.h"
#include "KeloHotkey/HotKeyService.h"
#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace kelo {

HotKeyRecorder::HotKeyRecorder(HotKeyService &service, const HotKeyCombo &combo,
                               const HotKeyCombo &defaultCombo, QObject *parent)
    : QObject(parent), m_service(&service), m_combo(combo), m_defaultCombo(defaultCombo)
{
    KeyboardLayout::onChange(this, [this] { Q_EMIT keyCapsChanged(); });
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HotKeyRecorder::updateSuspension);
}

HotKeyRecorder::~HotKeyRecorder()
{
    m_recording = false;
    updateSuspension();
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
    updateSuspension();
    Q_EMIT recordingChanged();
    Q_EMIT canResetChanged();
}

void HotKeyRecorder::stop()
{
    if (!m_recording)
        return;
    m_recording = false;
    qGuiApp->removeEventFilter(this);
    updateSuspension();
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
    m_grab.prolong();
    // What a held key repeats was judged when it went down.
    if (key.isAutoRepeat())
        return;
    const auto judgement =
        HotKeyJudgement::judge(virtualKeyForScanCode(key.nativeScanCode()), key.modifiers());
    switch (judgement.verdict) {
    case HotKeyJudgement::Verdict::Wait:
        return;
    case HotKeyJudgement::Verdict::Cancel:
        return stop();
    case HotKeyJudgement::Verdict::Reject:
        return beep();
    case HotKeyJudgement::Verdict::Accept:
        stop();
        return choose(judgement.combo);
    }
}

void HotKeyRecorder::choose(const HotKeyCombo &combo)
{
    setCombo(combo);
    Q_EMIT comboChosen(combo);
}

void HotKeyRecorder::updateSuspension()
{
    const QWindow *window = QGuiApplication::focusWindow();
    const bool suspends = m_recording && window;
    if (suspends == m_hasSuspended || !m_service)
        return;
    m_hasSuspended = suspends;
    if (suspends) {
        m_service->suspend();
        m_grab.take(*window);
    } else {
        m_grab.release();
        m_service->resume();
    }
}

} // namespace kelo
