#pragma once

#include "KeloHotkey/HotKeyCombo.h"

#include <QString>
#include <functional>

namespace mivora {

/// What the settings ask of the rest of the program. Either may be empty.
struct SettingsActions
{
    /// Registers the combination in place of the one in force. False, and nothing changes, when it is in use.
    std::function<bool(const kelo::HotKeyCombo &)> registerHotKey;
    /// Shows what the link leads to in the settings of the desktop.
    std::function<void(const QString &deepLink)> openSystemSettings;
};

} // namespace mivora
