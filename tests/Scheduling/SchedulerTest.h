#pragma once

#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "support/FakeClock.h"
#include "support/FakeEventSource.h"
#include "support/FakeLoginItem.h"
#include "support/MeetingFactory.h"
#include "support/MemoryDefaultsStore.h"

#include <cstring>
#include <gtest/gtest.h>

namespace mivora {

/// A scheduler among fakes, in UTC, that notes what its callbacks are told.
class SchedulerTest : public testing::Test
{
public:
    SchedulerTest()
    {
        scheduler.setTimeZone(QTimeZone::utc());
        scheduler.onPanelChange = [this](const auto &meeting) {
            calls.push_back("panel " + titleOf(meeting));
        };
        scheduler.onRefresh = [this] { calls.push_back("refresh"); };
        QObject::connect(&scheduler, &Scheduler::happened, [this](const char *event, const Meeting &meeting) {
            happened += event + std::strlen("Meeting") + (" " + meeting.title) + ", ";
        });
    }

    void refreshAt(Timestamp now)
    {
        clock.time = now;
        scheduler.refresh();
    }

    void refreshAt(const char *now) { refreshAt(at(now)); }

    /// What the callbacks were told since the last time, in order.
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences prefs{store, loginItem};
    FakeEventSource source;
    FakeClock clock;
    Scheduler scheduler{source, prefs, clock};
    std::vector<std::string> calls;
    /// "Started Standup, ": what it told of meetings.
    std::string happened;
};

using Titles = std::vector<std::string>;

} // namespace mivora
