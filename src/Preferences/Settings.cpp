#include "Preferences/Settings.h"

#include "Platform/DefaultsStore.h"
#include "Preferences/Preferences.h"

#include <QJsonArray>
#include <algorithm>

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

bool isWhole(const QJsonValue &number)
{
    return double(number.toInteger()) == number.toDouble();
}

} // namespace

QJsonValue Setting::readFrom(const DefaultsStore &store) const
{
    const QJsonValue stored = store.value(key);
    const bool isUsable = stored.type() == type && (!stored.isDouble() || isWhole(stored));
    return isUsable ? stored : registeredDefault;
}

const QList<Setting> &allSettings()
{
    constexpr auto boolean = QJsonValue::Bool;
    constexpr auto number = QJsonValue::Double;
    constexpr auto text = QJsonValue::String;
    constexpr auto list = QJsonValue::Array;
    static const QList<Setting> settings{
        {settingsKey::showTitle, boolean, true},
        {settingsKey::titleWidth, number, 24},
        {settingsKey::hideTitleWhileInhibited, boolean, false},
        {settingsKey::leadMinutes, number, 1, leadMinuteTexts()},
        {settingsKey::panelCorner, text, rawValue(PanelCorner::topRight), panelCornerNames()},
        {settingsKey::remindWithoutLink, boolean, false},
        // The JSON of the combination, which may be undecodable.
        {settingsKey::joinHotKey, text, QJsonValue(QJsonValue::Undefined)},
        {settingsKey::disabledCalendarIDs, list, QJsonArray()},
        {settingsKey::ignoredTitles, list, QJsonArray()},
        {settingsKey::ignoreUnanswered, boolean, false},
        {settingsKey::ignoreWithoutOthers, boolean, false},
        {settingsKey::browserServices, list, QJsonArray()},
        {settingsKey::hasCompletedOnboarding, boolean, false},
        {settingsKey::addresses, list, QJsonArray()},
    };
    return settings;
}

const Setting *settingNamed(const QString &key)
{
    const auto found = std::ranges::find_if(allSettings(), [&](const Setting &s) { return s.key == key; });
    return found == allSettings().end() ? nullptr : &*found;
}

QStringList storedList(const DefaultsStore &store, QLatin1String key)
{
    return settingNamed(key)->readFrom(store).toVariant().toStringList();
}

} // namespace mivora
