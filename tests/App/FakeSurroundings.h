#pragma once

#include "App/AppDelegate.h"
#include "Platform/SystemEvents.h"
#include "support/FakeClock.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeLoginItem.h"
#include "support/FakePasteboard.h"
#include "support/FakeWorkspace.h"

namespace mivora {

/// The world that the application stands in, for a test: time passes and things happen when the test says so,
/// and what the application does to it is recorded.
struct FakeSurroundings
{
    /// An application in this world; settings and bus are the test's. Without a bus no tray shows it.
    AppParts parts(DefaultsStore &defaults, std::unique_ptr<EventStore> store,
                   const QDBusConnection &bus = QDBusConnection(QStringLiteral("none")))
    {
        return {.workspace = workspace,
                .pasteboard = pasteboard,
                .loginItem = loginItem,
                .defaults = defaults,
                .systemEvents = systemEvents,
                .hotKeys = hotKeys,
                .clock = clock,
                .bus = bus,
                .store = std::move(store)};
    }

    FakeLoginItem loginItem;
    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    SystemEvents systemEvents;
    kelo::FakeHotKeyService hotKeys;
    FakeClock clock;
};

} // namespace mivora
