#pragma once

#include "KeloHotkey/HotKeyService.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "Platform/fake/FakeLoginItem.h"
#include "Platform/fake/MemoryDefaultsStore.h"
#include "Preferences/Preferences.h"
#include "Settings/SettingsWindowController.h"
#include "support/FakeEventSource.h"
#include "support/FakeHotKeyService.h"

namespace mivora {

/// The plug-in is there once in a process, and so is the look that it shows.
inline kelo::ViewLoader &sharedViews()
{
    static kelo::Appearance appearance{QDBusConnection(QStringLiteral("none"))};
    static kelo::ViewLoader views{appearance};
    return views;
}

/// Ends the views while there is an application.
struct Views final
{
    Views() = default;

    ~Views() { sharedViews().releaseUnused(); }
    Q_DISABLE_COPY_MOVE(Views)
};

/// The settings window with all that it needs. Settings are kept in memory unless a store is given.
struct SettingsUnderTest
{
    SettingsUnderTest() = default;

    explicit SettingsUnderTest(DefaultsStore &given) : store(given) {}

    QWindow &window() { return *controller.window(); }

    MemoryDefaultsStore memory{MemoryDefaultsStore::Kind::standard};
    DefaultsStore &store = memory;
    FakeLoginItem loginItem;
    Preferences prefs{store, loginItem};
    FakeEventSource source;
    kelo::FakeHotKeyService service;
    Views release;
    int refreshes = 0;
    QStringList opened;
    SettingsWindowController controller{
        prefs,
        source,
        service,
        sharedViews(),
        {[this] { ++refreshes; }, [this](const QString &link) { opened.append(link); }}};
};

} // namespace mivora
