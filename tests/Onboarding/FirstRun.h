#pragma once

#include "Calendar/CalendarWays.h"
#include "Onboarding/OnboardingFlow.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "support/FakeClock.h"
#include "support/FakeEventSource.h"
#include "support/FakeLoginItem.h"
#include "support/MeetingFactory.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SharedViews.h"

#include <QStringList>

namespace mivora {

/// The walkthrough over calendars and settings that stand still, at ten o'clock.
struct FirstRun
{
    explicit FirstRun(CalendarAuthorization access)
    {
        clock.time = at("2026-03-10T10:00:00Z");
        source.access = access;
        scheduler.setTimeZone(QTimeZone::utc());
    }

    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences prefs{store, loginItem};
    FakeEventSource source;
    FakeClock clock;
    Scheduler scheduler{source, prefs, clock};
    /// The links into the system settings that were to be opened.
    QStringList opened;
    CalendarWays ways{{.open = [this](const QString &link) { opened.append(link); },
                       .subscribe = [this] { opened.append(QStringLiteral("subscribe")); }}};
    Views release;
    OnboardingFlow flow{sharedViews(), prefs, source,
                        scheduler,     ways,  [](Timestamp) { return QStringLiteral("11:00 AM"); }};
};

} // namespace mivora
