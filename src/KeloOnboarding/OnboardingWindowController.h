#pragma once

#include "KeloOnboarding/OnboardingModel.h"
#include "KeloTheme/ViewWindow.h"

#include <vector>

namespace kelo {

/// The window of the first-run walkthrough. However the user ends it, by the last step's button or by closing
/// the window, its owner is told once.
class OnboardingWindowController final : public QObject
{
    Q_OBJECT

public:
    /// `size` is the content's, in logical pixels. `onFinish` may delete the controller, but only later.
    OnboardingWindowController(ViewLoader &views, const QString &title, const QSize &size,
                               std::function<void()> onFinish);

    /// Shows `steps` from the one at `startAt` (clamped) in a new window, or in the open one in place of
    /// what it shows, and brings the window to the front. Nothing happens where views can't be loaded.
    void show(std::vector<OnboardingStep> steps, const QString &finishTitle, int startAt);

    /// Null until shown, and again once closed.
    QWindow *window() const { return m_window.isVisible() ? m_window.window() : nullptr; }

    OnboardingModel &model() { return m_model; }

private:
    void finish();

    std::function<void()> m_onFinish;
    bool m_finished = false;
    OnboardingModel m_model;
    ViewWindow m_window;
};

} // namespace kelo
