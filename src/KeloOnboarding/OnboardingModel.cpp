#include "KeloOnboarding/OnboardingModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace kelo {

namespace {

// The damped harmonic oscillator that starts at rest, one length from its end.
double springWay(double progress)
{
    constexpr double length = 0.65;
    constexpr double response = 0.5;
    constexpr double dampingFraction = 0.85;
    if (progress >= 1)
        return 1;
    const double time = progress * length;
    const double frequency = 2 * std::numbers::pi / response;
    const double decay = dampingFraction * frequency;
    const double ringing = frequency * std::sqrt(1 - dampingFraction * dampingFraction);
    const double swing = std::cos(ringing * time) + decay / ringing * std::sin(ringing * time);
    return 1 - std::exp(-decay * time) * swing;
}

int clampedIndex(int index, std::size_t count)
{
    return std::min(std::max(index, 0), std::max(int(count) - 1, 0));
}

} // namespace

OnboardingModel::OnboardingModel(std::chrono::milliseconds tick)
{
    m_tick.setInterval(tick);
    connect(&m_tick, &QTimer::timeout, this, &OnboardingModel::updateCanSkip);
}

void OnboardingModel::open(std::vector<OnboardingStep> steps, const QString &finishTitle, int startAt)
{
    // The old steps' models stay until the view has let go of them.
    const std::vector<OnboardingStep> replaced = std::exchange(m_steps, std::move(steps));
    m_finishTitle = finishTitle;
    m_index = clampedIndex(startAt, m_steps.size());
    Q_EMIT indexChanged();
    Q_EMIT pagesChanged();
    watchStep();
}

QVariantList OnboardingModel::pages() const
{
    QVariantList pages;
    for (const OnboardingStep &step : m_steps) {
        const QString source = QStringLiteral("qrc:/") + step.module + QLatin1Char('/') + step.component +
                               QStringLiteral(".qml");
        pages.append(QVariantMap{{QStringLiteral("source"), source},
                                 {QStringLiteral("model"), QVariant::fromValue(step.model.get())}});
    }
    return pages;
}

QString OnboardingModel::mainTitle() const
{
    return isLast() ? m_finishTitle : tr("Continue");
}

QEasingCurve OnboardingModel::motion() const
{
    QEasingCurve curve;
    curve.setCustomType(springWay);
    return curve;
}

void OnboardingModel::advance()
{
    if (isLast()) {
        if (finish)
            finish();
        return;
    }
    ++m_index;
    Q_EMIT indexChanged();
    watchStep();
}

void OnboardingModel::watchStep()
{
    m_tick.start();
    updateCanSkip();
}

void OnboardingModel::updateCanSkip()
{
    const bool isWaiting = !m_steps.empty() && m_steps[m_index].isComplete;
    // A step that waits for nothing costs nothing.
    if (!isWaiting)
        m_tick.stop();
    const bool canSkip = isWaiting && !m_steps[m_index].isComplete();
    if (std::exchange(m_canSkip, canSkip) != canSkip)
        Q_EMIT canSkipChanged();
}

} // namespace kelo
