#pragma once

#include "Preferences/PanelCorner.h"

#include <QJsonValue>
#include <QLatin1String>
#include <QList>
#include <QStringList>

/// The stored settings: their keys, types and what a key reads as that was never written.
namespace mivora {

namespace settingsKey {
inline constexpr QLatin1String showTitle("showTitle");
inline constexpr QLatin1String titleWidth("titleWidth");
inline constexpr QLatin1String leadMinutes("leadMinutes");
inline constexpr QLatin1String panelCorner("panelCorner");
inline constexpr QLatin1String remindWithoutLink("remindWithoutLink");
inline constexpr QLatin1String joinHotKey("joinHotKey");
inline constexpr QLatin1String disabledCalendarIDs("disabledCalendarIDs");
inline constexpr QLatin1String browserServices("browserServices");
inline constexpr QLatin1String hasCompletedOnboarding("hasCompletedOnboarding");
/// The user's own e-mail addresses, for calendars that do not say whose they are.
inline constexpr QLatin1String addresses("addresses");
} // namespace settingsKey

namespace registered {
inline constexpr bool showTitle = true;
inline constexpr qint64 titleWidth = 24;
inline constexpr qint64 leadMinutes = 1;
inline constexpr PanelCorner panelCorner = PanelCorner::topRight;
inline constexpr bool remindWithoutLink = false;
inline constexpr bool hasCompletedOnboarding = false;
} // namespace registered

enum class SettingType { boolean, integer, string, stringList, data };

struct Setting
{
    QLatin1String key;
    SettingType type;
    /// Undefined where nothing is registered: the setting is absent until it is set.
    QJsonValue registeredDefault;
    /// The only values that mean something; empty where all of the type do.
    QStringList choices = {};
};

/// All stored settings.
const QList<Setting> &allSettings();

} // namespace mivora
