#pragma once

#include <QString>
#include <array>
#include <optional>

namespace mivora {

/// The pages of the settings window, in the order of its sidebar.
enum class SettingsPage { general, calendars };

inline constexpr std::array allSettingsPages{SettingsPage::general, SettingsPage::calendars};

/// The name by which a page is asked for, such as "general".
QString rawValue(SettingsPage page);

/// The page with the name \a raw (case-sensitive), or nothing.
std::optional<SettingsPage> settingsPageFromRawValue(const QString &raw);

/// What stands in the sidebar and in the window's title.
QString title(SettingsPage page);

/// The theme's symbol and the role of its colour: "gray" or "red".
struct SettingsPageIcon
{
    QString symbol;
    QString tint;
};

SettingsPageIcon icon(SettingsPage page);

} // namespace mivora
