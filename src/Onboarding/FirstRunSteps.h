#pragma once

#include "KeloOnboarding/OnboardingStep.h"
#include "Meetings/Timestamp.h"

#include <vector>

namespace mivora {

class EventSource;
class Scheduler;

/// The steps of the first run, in their order.
enum class FirstRunStep { welcome = 0, calendar = 1, firstMeeting = 2 };

/// What the steps ask of the program.
struct FirstRunActions
{
    /// Called after every change of the permission to read calendars.
    std::function<void()> refresh;
    /// Opens a link into the system settings.
    std::function<void(const QString &link)> openSystemSettings;
    /// Writes the time of day.
    std::function<QString(Timestamp)> formatTime;
};

/// The steps: a picture of what Mivora does, access to the calendars, the next meeting. All of \a actions are
/// set; \a source and \a scheduler must outlive the steps.
std::vector<kelo::OnboardingStep> firstRunSteps(EventSource &source, const Scheduler &scheduler,
                                                const FirstRunActions &actions);

} // namespace mivora
