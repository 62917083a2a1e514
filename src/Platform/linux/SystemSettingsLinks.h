#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace mivora {

/// The scheme of links into the system settings.
inline constexpr QLatin1String systemSettingsScheme("x-apple.systempreferences");

/// The command, program first, that shows on the desktop \a desktops (the value of XDG_CURRENT_DESKTOP: names
/// separated by colons, the most specific first) what the settings link \a link leads to. Nothing when the
/// desktop is unknown or has no such panel, or \a link is not known.
std::optional<QStringList> systemSettingsCommand(const QString &link, const QString &desktops);

/// Runs that command for the running desktop. False when there is none or it could not be started.
bool openSystemSettings(const QString &link);

} // namespace mivora
