#pragma once

#include "Calendar/CalendarWays.h"
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
    /// The links that lead nowhere.
    QStringList missing;
    QString copied;
    CalendarWays ways{{.open = [this](const QString &link) { opened.append(link); },
                       .leadsSomewhere = [this](const QString &link) { return !missing.contains(link); },
                       .subscribe = [this] { opened.append(QStringLiteral("subscribe")); }}};
    SettingsWindowController controller{
        prefs,
        source,
        ways,
        service,
        sharedViews(),
        {[this](const auto &) { return isFree; },
         [this](const QString &text) { copied = text; },
         {[](const std::string &id) { return id == "own"; },
          [this](const CalendarInfo &calendar) { opened.append(QString::fromStdString(calendar.title)); }}}};
};

} // namespace mivora
