#include "Onboarding/FirstRunSteps.h"

#include "Calendar/EventSource.h"
#include "Onboarding/CalendarStepModel.h"
#include "Onboarding/FirstMeetingModel.h"

namespace mivora {

namespace {

kelo::OnboardingStep makeStep(const QString &id, const QString &component,
                              std::shared_ptr<QObject> model = nullptr)
{
    kelo::OnboardingStep step;
    step.id = id;
    step.module = QStringLiteral("OnboardingViews");
    step.component = component;
    step.model = std::move(model);
    return step;
}

kelo::OnboardingStep calendarStep(EventSource &source, const FirstRunActions &actions)
{
    auto model = std::make_shared<CalendarStepModel>(source, actions.refresh, actions.openSystemSettings);
    auto step = makeStep(QStringLiteral("calendar"), QStringLiteral("CalendarStep"), model);
    step.isComplete = [&source] { return source.authorization() == CalendarAuthorization::granted; };
    step.onAppear = [model] { model->appear(); };
    step.onDisappear = [model] { model->disappear(); };
    return step;
}

} // namespace

std::vector<kelo::OnboardingStep> firstRunSteps(EventSource &source, const Scheduler &scheduler,
                                                const FirstRunActions &actions)
{
    return {
        makeStep(QStringLiteral("welcome"), QStringLiteral("WelcomeStep")),
        calendarStep(source, actions),
        makeStep(QStringLiteral("first"), QStringLiteral("FirstMeetingStep"),
                 std::make_shared<FirstMeetingModel>(scheduler, actions.formatTime)),
    };
}

} // namespace mivora
