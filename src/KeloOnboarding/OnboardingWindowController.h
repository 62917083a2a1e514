#pragma once

#include "KeloOnboarding/OnboardingModel.h"

#include <QPointer>
#include <QSize>
#include <QWindow>
#include <vector>

namespace kelo {

class ViewLoader;

/// The window of the first-run walkthrough. However it ends, by the last step's button or by closing the
/// window, its owner is told once.
class OnboardingWindowController final : public QObject
{
    Q_OBJECT

public:
    /// \a size is the content's, in logical pixels. \a onFinish may delete the controller. \a views must
    /// outlive the windows, and those just closed until the event loop has run.
    OnboardingWindowController(ViewLoader &views, const QString &title, const QSize &size,
                               std::function<void()> onFinish);
    ~OnboardingWindowController() override;

    /// Shows \a steps from the one at \a startAt (clamped) in a new window, or in the open one in place of
    /// what it shows, and brings the window to the front. Nothing happens where views can't be loaded.
    void show(std::vector<OnboardingStep> steps, const QString &finishTitle, int startAt);

    /// Null until shown, and again once closed.
    QWindow *window() const { return m_window; }

    /// Null when there is no window.
    OnboardingModel *model() const { return m_model; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool makeWindow();
    void placeWindow();
    void windowWillClose();
    /// Gives up the window and its view, from the event loop: one of its buttons may be what closed it.
    void dropWindow();

    ViewLoader &m_views;
    QString m_title;
    QSize m_size;
    std::function<void()> m_onFinish;
    bool m_finished = false;
    QPointer<QWindow> m_window;
    QPointer<OnboardingModel> m_model;
};

} // namespace kelo
