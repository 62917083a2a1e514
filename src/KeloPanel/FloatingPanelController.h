#pragma once

#include "KeloPanel/FloatingPanel.h"
#include "KeloPanel/Screens.h"

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>

namespace kelo {

/// A program that has a window on the desktop.
struct RunningApp
{
    qint64 processID = 0;
    /// The class of its window; may be empty.
    QString name;

    friend bool operator==(const RunningApp &, const RunningApp &) = default;
};

/// Owns one floating panel, puts it on the right screen and hands its keys to a handler. Main thread only.
class FloatingPanelController final : public QObject
{
    Q_OBJECT

public:
    FloatingPanelController(ViewLoader &views, PanelContent content);

    /// True means that the key was handled.
    std::function<bool(const QKeyEvent &)> keyHandler;
    /// Called just before show() places the panel and orders it front.
    std::function<void()> onWillShow;
    /// Called after the panel was ordered out.
    std::function<void()> onDidHide;
    /// Whether losing the keyboard hides the panel.
    bool hidesOnResignKey = true;

    FloatingPanel &panel() { return m_panel; }

    /// The program that was in front when show() was last called; nothing when there was none or it was this
    /// one.
    const std::optional<RunningApp> &previousApp() const { return m_previousApp; }

    bool isVisible() const { return m_panel.isVisible(); }

    /// Whether an input method is composing text in the panel's focused field.
    bool firstResponderIsComposing() const { return m_panel.isComposing(); }

    /// Shows the panel in the middle of the screen with the pointer, with the keyboard.
    void show();
    /// Shows the panel below `rect`, which is in screen coordinates, with the keyboard.
    void show(const QRect &rect);
    /// Shows the panel in its place on `area`, or where it was last when there is none; a compositor that
    /// places panels itself chooses the screen. The keyboard stays where it is, and neither previousApp nor
    /// onWillShow takes part. False when the view can't be shown.
    bool orderFrontRegardless(const PanelPlace &place, const std::optional<QRectF> &area);
    /// Does nothing when the panel is hidden.
    void hide();
    void toggle();

private:
    void prepareToShow();
    void stayOnScreen();

    FloatingPanel m_panel;
    std::optional<RunningApp> m_previousApp;
    /// Between showing and hiding.
    bool m_isWanted = false;
    QTimer m_releaseTimer;
    QTimer m_screensSettle;
};

} // namespace kelo
