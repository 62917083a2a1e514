#include "Onboarding/OnboardingFlow.h"

#include "Calendar/EventSource.h"
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

} // namespace

OnboardingFlow::OnboardingFlow(kelo::ViewLoader &views, Preferences &prefs, EventSource &source,
                               Scheduler &scheduler,
                               std::function<void(const QString &link)> openSystemSettings,
                               std::function<QString(Timestamp)> formatTime)
    : m_views(views), m_prefs(prefs), m_source(source),
      m_scheduler(scheduler), m_actions{[&scheduler] { scheduler.refresh(); }, std::move(openSystemSettings),
                                        std::move(formatTime)}
{
}

void OnboardingFlow::showAtLaunch()
{
    if (m_prefs.hasCompletedOnboarding())
        return;
    const bool hasAccess = m_source.authorization() == CalendarAuthorization::granted;
    show(hasAccess ? FirstRunStep::firstMeeting : FirstRunStep::welcome);
}

void OnboardingFlow::show(FirstRunStep first)
{
    if (!m_window)
        m_window = std::make_unique<kelo::OnboardingWindowController>(
            m_views, Onboarding::tr("Welcome to Mivora"), contentSize, [this] { finish(); });
    m_window->show(firstRunSteps(m_source, m_scheduler, m_actions), Onboarding::tr("Start Using Mivora"),
                   int(first));
}

void OnboardingFlow::finish()
{
    m_prefs.setHasCompletedOnboarding(true);
    // Later: its view has called.
    m_window.release()->deleteLater();
    m_scheduler.refresh();
}

} // namespace mivora
