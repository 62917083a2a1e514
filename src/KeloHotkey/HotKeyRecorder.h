#pragma once

#include "KeloHotkey/HotKeyCombo.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <functional>

class QKeyEvent;

namespace kelo {

class HotKeyService;

/// Records a shortcut from the keyboard; HotKeyRecorder.qml shows it. Main thread only.
///
/// While it records and one of the program's windows has the keyboard, no key reaches a window, the window
/// manager gets none of those that it acts on, and the registered global shortcuts are suspended. In the
/// windows of others all goes on working.
class HotKeyRecorder final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool recording READ isRecording NOTIFY recordingChanged)
    Q_PROPERTY(QStringList keyCaps READ keyCaps NOTIFY keyCapsChanged)
    Q_PROPERTY(QString text READ text NOTIFY keyCapsChanged)
    Q_PROPERTY(bool canReset READ canReset NOTIFY canResetChanged)
    Q_PROPERTY(QString toolTip READ toolTip NOTIFY recordingChanged)
    Q_PROPERTY(QString resetToolTip READ resetToolTip NOTIFY keyCapsChanged)

public:
    HotKeyRecorder(HotKeyService &service, const HotKeyCombo &combo, const HotKeyCombo &defaultCombo,
                   QObject *parent = nullptr);
    ~HotKeyRecorder() override;

    const HotKeyCombo &combo() const { return m_combo; }

    /// Shows another combination; nobody is told that the user chose it.
    void setCombo(const HotKeyCombo &combo);

    bool isRecording() const { return m_recording; }

    /// What the key caps show: the keys in the words of the desktop, on the user's keyboard layout.
    QStringList keyCaps() const { return m_combo.keyNames(); }

    QString text() const { return m_combo.text(); }

    /// Whether there is another combination to go back to.
    bool canReset() const { return !m_recording && m_combo != m_defaultCombo; }

    QString toolTip() const;
    QString resetToolTip() const;

    /// A click on the key caps: begins to record, or gives up.
    Q_INVOKABLE void toggle();

    /// Gives up. To be called when the recorder leaves the screen.
    Q_INVOKABLE void stop();

    /// Goes back to the default.
    Q_INVOKABLE void reset();

    /// Called for keys that are no shortcut: the desktop's alert sound.
    std::function<void()> beep;

Q_SIGNALS:
    void recordingChanged();
    void keyCapsChanged();
    void canResetChanged();
    /// The user chose a combination, which may be the one shown before.
    void comboChosen(const kelo::HotKeyCombo &combo);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void start();
    void judge(const QKeyEvent &key);
    void choose(const HotKeyCombo &combo);
    void updateGrab();

    QPointer<HotKeyService> m_service;
    HotKeyCombo m_combo;
    HotKeyCombo m_defaultCombo;
    bool m_recording = false;
    /// It records and one of the program's windows has the keyboard; on an X display that one keeps it until
    /// the limit.
    bool m_hasKeys = false;
    QPointer<QWindow> m_grabbing;
    QTimer m_grabLimit;
};

} // namespace kelo
