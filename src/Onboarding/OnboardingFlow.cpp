#include "Onboarding/OnboardingFlow.h"

#include "Calendar/EventSource.h"
#include "Onboarding/CalendarStepModel.h"
#include "Onboarding/FirstMeetingModel.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"

#include <QCoreApplication>

namespace mivora {

namespace {

constexpr QSize contentSize(500, 400);

/// The context of the texts for translators.
struct Onboarding
{
    Q_DECLARE_TR_FUNCTIONS(Onboarding)
};

kelo::OnboardingStep makeStep(const char *id, const char *component, std::shared_ptr<QObject> model = nullptr)
{
    kelo::OnboardingStep step;
    step.id = QLatin1String(id);
    step.module = QStringLiteral("OnboardingViews");
    step.component = QLatin1String(component);
    step.model = std::move(model);
    return step;
}

} // namespace

OnboardingFlow::OnboardingFlow(kelo::ViewLoader &views, Preferences &prefs, EventSource &source,
                               Scheduler &scheduler, CalendarWays &ways,
                               std::function<QString(Timestamp)> formatTime)
    : m_views(views), m_prefs(prefs), m_source(source), m_scheduler(scheduler), m_ways(ways),
      m_formatTime(std::move(formatTime))
{
}

void OnboardingFlow::showAtLaunch()
{
    if (!m_prefs.hasCompletedOnboarding())
        show(hasAccess() ? FirstRunStep::firstMeeting : FirstRunStep::welcome);
}

void OnboardingFlow::show(FirstRunStep first)
{
    if (!m_window)
        m_window = std::make_unique<kelo::OnboardingWindowController>(
            m_views, Onboarding::tr("Welcome to Mivora"), contentSize, [this] { finish(); });
    m_window->show(steps(), Onboarding::tr("Start Using Mivora"), int(first));
}

std::vector<kelo::OnboardingStep> OnboardingFlow::steps()
{
    const auto access = std::make_shared<CalendarStepModel>(
        m_source, [this] { m_scheduler.refresh(); }, m_ways);
    auto calendar = makeStep("calendar", "CalendarStep", access);
    calendar.isComplete = [access] {
        access->update();
        return access->isGranted();
    };
    const auto first = std::make_shared<FirstMeetingModel>(m_scheduler, m_formatTime);
    first->trayHint = m_trayHint;
    m_firstMeeting = first;
    return {makeStep("welcome", "WelcomeStep"), calendar, makeStep("first", "FirstMeetingStep", first)};
}

void OnboardingFlow::setTrayHint(const QString &hint)
{
    m_trayHint = hint;
    if (const auto shown = m_firstMeeting.lock())
        shown->setProperty("trayHint", hint);
}

bool OnboardingFlow::hasAccess() const
{
    return m_source.authorization() == CalendarAuthorization::granted;
}

void OnboardingFlow::finish()
{
    m_prefs.setHasCompletedOnboarding(true);
    // Later: its view has called.
    m_window.release()->deleteLater();
    m_scheduler.refresh();
}

} // namespace mivora
