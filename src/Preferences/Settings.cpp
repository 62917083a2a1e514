#include "Preferences/Settings.h"

#include "Preferences/Preferences.h"

#include <QJsonArray>

namespace mivora {

namespace {

QStringList leadMinuteTexts()
{
    QStringList texts;
    for (const int minutes : Preferences::leadMinuteChoices)
        texts.append(QString::number(minutes));
    return texts;
}

QStringList panelCornerNames()
{
    QStringList names;
    for (const PanelCorner corner : allPanelCorners)
        names.append(rawValue(corner));
    return names;
}

} // namespace

const QList<Setting> &allSettings()
{
    static const QList<Setting> settings{
        {settingsKey::showTitle, SettingType::boolean, registered::showTitle},
        {settingsKey::titleWidth, SettingType::integer, registered::titleWidth},
        {settingsKey::leadMinutes, SettingType::integer, registered::leadMinutes, leadMinuteTexts()},
        {settingsKey::panelCorner, SettingType::string, rawValue(registered::panelCorner),
         panelCornerNames()},
        {settingsKey::remindWithoutLink, SettingType::boolean, registered::remindWithoutLink},
        {settingsKey::joinHotKey, SettingType::data, QJsonValue(QJsonValue::Undefined)},
        {settingsKey::disabledCalendarIDs, SettingType::stringList, QJsonArray()},
        {settingsKey::browserServices, SettingType::stringList, QJsonArray()},
        {settingsKey::hasCompletedOnboarding, SettingType::boolean, registered::hasCompletedOnboarding},
        {settingsKey::addresses, SettingType::stringList, QJsonArray()},
    };
    return settings;
}

} // namespace mivora
