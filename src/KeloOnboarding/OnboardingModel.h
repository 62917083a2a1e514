#pragma once

#include <QEasingCurve>
#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace kelo {

/// One page of the first-run walkthrough.
struct OnboardingStep
{
    QString id;
    /// The page: the QML module and the component in it.
    QString module;
    QString component;
    /// The page's property `model`; null for a page that has none. Lives as long as the step.
    std::shared_ptr<QObject> model;
    /// Whether what the step waits for has happened. Asked every second while the step is on show, so it must
    /// be cheap. Absent when the step waits for nothing.
    std::function<bool()> isComplete;
};

/// The state of the walkthrough that its view shows. It moves forward only, one step at a time.
class OnboardingModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList pages READ pages NOTIFY pagesChanged)
    Q_PROPERTY(int index READ index NOTIFY indexChanged)
    Q_PROPERTY(QString mainTitle READ mainTitle NOTIFY indexChanged)
    Q_PROPERTY(bool canSkip READ canSkip NOTIFY canSkipChanged)
    Q_PROPERTY(QEasingCurve motion READ motion CONSTANT)
    Q_PROPERTY(int motionLength READ motionLength CONSTANT)

public:
    /// Once in a `tick` the step on show is asked whether it is complete.
    explicit OnboardingModel(std::chrono::milliseconds tick = std::chrono::seconds(1));

    /// Shows `steps` from the one at `startAt`, which is clamped to them, in place of those on show.
    void open(std::vector<OnboardingStep> steps, const QString &finishTitle, int startAt);

    /// The window is gone: no step is asked any more.
    void close() { m_tick.stop(); }

    /// For each step the address of its view as `source` and its model as `model`.
    QVariantList pages() const;

    /// The step on show; 0 when there are none.
    int index() const { return m_index; }

    /// Whether the step on show is the last one, or there is none.
    bool isLast() const { return m_index + 1 >= int(m_steps.size()); }

    /// The main button: "Continue", or the finish title on the last step.
    QString mainTitle() const;

    /// Whether the step on show waits for something that has not happened yet.
    bool canSkip() const { return m_canSkip; }

    /// The motion from one step to the next: that of a spring with a response (the period without damping) of
    /// 0.5 s and 0.85 of the critical damping, so that it runs past the end by less than a hundredth.
    QEasingCurve motion() const;

    /// In milliseconds: when the spring is within a thousandth of its way.
    int motionLength() const { return 650; }

    /// Goes on to the next step; from the last one, finishes.
    Q_INVOKABLE void advance();

    /// Called when the main button of the last step is pressed.
    std::function<void()> finish;

Q_SIGNALS:
    void pagesChanged();
    void indexChanged();
    void canSkipChanged();

private:
    void watchStep();
    void updateCanSkip();

    std::vector<OnboardingStep> m_steps;
    QString m_finishTitle;
    int m_index = 0;
    bool m_canSkip = false;
    QTimer m_tick;
};

} // namespace kelo
