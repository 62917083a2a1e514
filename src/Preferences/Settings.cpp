#include "Preferences/Settings.h"

#include <QJsonArray>

namespace mivora {

const QList<Setting> &allSettings()
{
    static const QList<Setting> settings{
        {settingsKey::showTitle, SettingType::boolean, registered::showTitle},
        {settingsKey::titleWidth, SettingType::integer, registered::titleWidth},
        {settingsKey::leadMinutes, SettingType::integer, registered::leadMinutes},
        {settingsKey::panelCorner, SettingType::string, rawValue(registered::panelCorner)},
        {settingsKey::remindWithoutLink, SettingType::boolean, registered::remindWithoutLink},
        {settingsKey::joinHotKey, SettingType::data, QJsonValue(QJsonValue::Undefined)},
        {settingsKey::disabledCalendarIDs, SettingType::stringList, QJsonArray()},
        {settingsKey::browserServices, SettingType::stringList, QJsonArray()},
        {settingsKey::hasCompletedOnboarding, SettingType::boolean, registered::hasCompletedOnboarding},
    };
    return settings;
}

} // namespace mivora
