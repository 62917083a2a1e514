#pragma once

#include "KeloHotkey/HotKeyService.h"
#include "Preferences/Preferences.h"
#include "Settings/SettingsWindowController.h"
#include "support/FakeEventSource.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SharedViews.h"

namespace mivora {

/// The settings window with all that it needs. Settings are kept in memory.
struct SettingsUnderTest
{
    QWindow &window() { return *controller.window(); }

    MemoryDefaultsStore store{MemoryDefaultsStore::Kind::standard};
    FakeLoginItem loginItem;
    Preferences prefs{store, loginItem};
    FakeEventSource source;
    kelo::FakeHotKeyService service;
    Views release;
    bool isFree = true;
    QStringList opened;
    QString copied;
    SettingsWindowController controller{prefs,
                                        source,
                                        service,
                                        sharedViews(),
                                        {[this](const auto &) { return isFree; },
                                         [this](const QString &link) { opened.append(link); },
                                         [this](const QString &text) { copied = text; }}};
};

} // namespace mivora
