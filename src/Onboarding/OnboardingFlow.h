#pragma once

#include "KeloOnboarding/OnboardingWindowController.h"
#include "Meetings/Timestamp.h"

#include <memory>

namespace mivora {

class CalendarWays;
class EventSource;
class FirstMeetingModel;
class Preferences;
class Scheduler;

/// The steps of the first run, in their order.
enum class FirstRunStep { welcome, calendar, firstMeeting };

/// The walkthrough of the first run: a picture of what Mivora does, access to the calendars, the next
/// meeting. At its end it is remembered as done, its window is let go, and the calendars are read again.
class OnboardingFlow final
{
public:
    /// `ways` lead to calendars; `formatTime` writes the time of day. The objects must outlive the flow.
    OnboardingFlow(kelo::ViewLoader &views, Preferences &prefs, EventSource &source, Scheduler &scheduler,
                   CalendarWays &ways, std::function<QString(Timestamp)> formatTime);

    /// At the program's start: shows the walkthrough unless it was done before. Who has already given access
    /// begins with the last step.
    void showAtLaunch();

    /// Shows the walkthrough from `first` on; one that is open starts anew from there.
    void show(FirstRunStep first);

    /// Null while the walkthrough is not on show.
    kelo::OnboardingWindowController *window() const { return m_window.get(); }

    /// What the last step says in place of where the countdown is: what to do about an icon that nothing
    /// shows. Empty while something does.
    void setTrayHint(const QString &hint);

private:
    std::vector<kelo::OnboardingStep> steps();
    bool hasAccess() const;
    void finish();

    kelo::ViewLoader &m_views;
    Preferences &m_prefs;
    EventSource &m_source;
    Scheduler &m_scheduler;
    CalendarWays &m_ways;
    std::function<QString(Timestamp)> m_formatTime;
    std::unique_ptr<kelo::OnboardingWindowController> m_window;
    QString m_trayHint;
    std::weak_ptr<FirstMeetingModel> m_firstMeeting;
};

} // namespace mivora
