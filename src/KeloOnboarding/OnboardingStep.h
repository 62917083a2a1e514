#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

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
    /// Called when the step comes on show and when it leaves, by moving on or with the window.
    std::function<void()> onAppear;
    std::function<void()> onDisappear;
};

} // namespace kelo
