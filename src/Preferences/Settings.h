#pragma once

#include <QJsonValue>
#include <QLatin1String>
#include <QList>
#include <QStringList>

/// The stored settings: their keys, types and what a key reads as that was never written.
namespace mivora {

class DefaultsStore;

namespace settingsKey {
inline constexpr QLatin1String showTitle("showTitle");
inline constexpr QLatin1String titleWidth("titleWidth");
inline constexpr QLatin1String hideTitleWhileInhibited("hideTitleWhileInhibited");
inline constexpr QLatin1String leadMinutes("leadMinutes");
inline constexpr QLatin1String panelCorner("panelCorner");
inline constexpr QLatin1String remindWithoutLink("remindWithoutLink");
inline constexpr QLatin1String joinHotKey("joinHotKey");
inline constexpr QLatin1String disabledCalendarIDs("disabledCalendarIDs");
inline constexpr QLatin1String ignoredTitles("ignoredTitles");
inline constexpr QLatin1String ignoreUnanswered("ignoreUnanswered");
inline constexpr QLatin1String ignoreWithoutOthers("ignoreWithoutOthers");
inline constexpr QLatin1String browserServices("browserServices");
inline constexpr QLatin1String hasCompletedOnboarding("hasCompletedOnboarding");
/// The user's own e-mail addresses, for calendars that do not say whose they are.
inline constexpr QLatin1String addresses("addresses");
} // namespace settingsKey

struct Setting
{
    QLatin1String key;
    /// Numbers are whole, arrays hold strings.
    QJsonValue::Type type = QJsonValue::Undefined;
    /// Undefined where nothing is registered: the setting is absent until it is set.
    QJsonValue registeredDefault;
    /// The only values that mean something; empty where all of the type do.
    QStringList choices = {};

    /// What is stored in `store` or, if that is nothing or of another type, the registered default.
    QJsonValue readFrom(const DefaultsStore &store) const;
};

/// All stored settings.
const QList<Setting> &allSettings();

/// Null when no setting has the key.
const Setting *settingNamed(const QString &key);

/// The strings of the setting `key`, which is an array.
QStringList storedList(const DefaultsStore &store, QLatin1String key);

} // namespace mivora
