#pragma once

#include <QString>
#include <functional>

namespace mivora {

/// What the settings ask of the rest of the program. Either may be empty.
struct SettingsActions
{
    /// The menu and the meetings have to be brought up to date with the settings.
    std::function<void()> refresh;
    /// Shows what the link leads to in the settings of the desktop.
    std::function<void(const QString &deepLink)> openSystemSettings;
};

} // namespace mivora
