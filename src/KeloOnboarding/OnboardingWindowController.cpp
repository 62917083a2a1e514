#include "KeloOnboarding/OnboardingWindowController.h"

#include <utility>

namespace kelo {

OnboardingWindowController::OnboardingWindowController(ViewLoader &views, const QString &title,
                                                       const QSize &size, std::function<void()> onFinish)
    : m_onFinish(std::move(onFinish)),
      // Neither to be resized nor to be minimized: a window that is used once.
      m_window(views, {.module = QStringLiteral("KeloOnboardingViews"),
                       .component = QStringLiteral("OnboardingView"),
                       .properties = {{QStringLiteral("title"), title},
                                      {QStringLiteral("model"), QVariant::fromValue<QObject *>(&m_model)}},
                       .size = size,
                       .flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint,
                       .title = title})
{
    m_model.finish = [this] {
        m_window.close();
        finish();
    };
    connect(&m_window, &ViewWindow::closed, this, &OnboardingWindowController::finish);
}

void OnboardingWindowController::show(std::vector<OnboardingStep> steps, const QString &finishTitle,
                                      int startAt)
{
    m_model.open(std::move(steps), finishTitle, startAt);
    if (!m_window.show())
        m_model.close();
}

void OnboardingWindowController::finish()
{
    m_model.close();
    if (!std::exchange(m_finished, true))
        m_onFinish();
}

} // namespace kelo
