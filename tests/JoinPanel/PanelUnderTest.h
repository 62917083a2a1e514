#pragma once

#include "JoinPanel/JoinPanelController.h"
#include "Preferences/Preferences.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SharedViews.h"

#include <string>
#include <vector>

namespace mivora {

/// The Join panel with all that it needs, and a record of what was done with it: "join TITLE" and so on.
struct PanelUnderTest
{
    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences prefs{store, loginItem};
    Views release;
    kelo::ViewLoader &views = sharedViews();
    std::vector<std::string> actions;
    const JoinPanelActions recorded{
        .onJoin = record("join "), .onSnooze = record("snooze "), .onDismiss = record("dismiss ")};
    JoinPanelController panel{prefs, views, recorded, Timestamp{}};

    QWindow *window() { return panel.controller().panel().window(); }

private:
    std::function<void(const Meeting &)> record(const std::string &verb)
    {
        return [this, verb](const Meeting &meeting) { actions.push_back(verb + meeting.title); };
    }
};

} // namespace mivora
