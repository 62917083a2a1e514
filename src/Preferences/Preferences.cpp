#include "Preferences/Preferences.h"

#include "Platform/DefaultsStore.h"
#include "Platform/LoginItem.h"
#include "Platform/SystemLog.h"
#include "Preferences/Settings.h"
#include "Preferences/StoredForms.h"

#include <algorithm>

namespace mivora {

namespace {

// What was set is used as it was given until the next start, also when another setting is read in anew: so a
// stored value that is the current one stays.

int readTitleWidth(const DefaultsStore &store, int current)
{
    const qint64 stored = store.integer(settingsKey::titleWidth).value_or(registered::titleWidth);
    if (stored == current)
        return current;
    return static_cast<int>(
        std::clamp<qint64>(stored, Preferences::minTitleWidth, Preferences::maxTitleWidth));
}

int readLeadMinutes(const DefaultsStore &store, int current)
{
    const qint64 stored = store.integer(settingsKey::leadMinutes).value_or(registered::leadMinutes);
    const auto &choices = Preferences::leadMinuteChoices;
    const bool isUsable = stored == current || std::ranges::find(choices, stored) != choices.end();
    return static_cast<int>(isUsable ? stored : registered::leadMinutes);
}

PanelCorner readPanelCorner(const DefaultsStore &store)
{
    const QString stored = store.string(settingsKey::panelCorner).value_or(QString());
    return panelCornerFromRawValue(stored).value_or(registered::panelCorner);
}

std::optional<kelo::HotKeyCombo> readJoinHotKey(const DefaultsStore &store)
{
    const auto stored = store.data(settingsKey::joinHotKey);
    const auto combo = stored ? kelo::HotKeyCombo::fromJson(*stored) : std::nullopt;
    // Virtual key codes have 16 bits; more can only come from a file edited by hand, and names no key.
    return combo && combo->keyCode <= 0xFFFF ? combo : std::nullopt;
}

} // namespace

Preferences::Preferences(DefaultsStore &store, LoginItem &loginItem, QObject *parent)
    : QObject(parent), m_store(store), m_loginItem(loginItem)
{
    readStore();
    m_launchAtLogin = m_store.isStandard() && m_loginItem.isEnabled();
    connect(&m_store, &DefaultsStore::changedExternally, this, &Preferences::readStore);
}

/// Announces nothing before everything is read, so that observers never see half of a change.
void Preferences::readStore()
{
    std::vector<Changed> changes;
    const auto update = [&changes](auto &member, const auto &value, Changed changed) {
        if (member == value)
            return false;
        member = value;
        changes.push_back(changed);
        return true;
    };
    const auto flag = [this](const QString &key, bool fallback) {
        return m_store.boolean(key).value_or(fallback);
    };
    const auto list = [this](const QString &key) { return m_store.stringList(key).value_or(QStringList()); };

    update(m_showTitle, flag(settingsKey::showTitle, registered::showTitle), &Preferences::showTitleChanged);
    update(m_titleWidth, readTitleWidth(m_store, m_titleWidth), &Preferences::titleWidthChanged);
    update(m_leadMinutes, readLeadMinutes(m_store, m_leadMinutes), &Preferences::leadMinutesChanged);
    update(m_panelCorner, readPanelCorner(m_store), &Preferences::panelCornerChanged);
    update(m_remindWithoutLink, flag(settingsKey::remindWithoutLink, registered::remindWithoutLink),
           &Preferences::remindWithoutLinkChanged);
    if (update(m_joinHotKey, readJoinHotKey(m_store), &Preferences::joinHotKeyChanged))
        changes.push_back(&Preferences::joinHotKeyWasSet);
    update(m_disabledCalendarIDs, stringsFromStoredForm(list(settingsKey::disabledCalendarIDs)),
           &Preferences::disabledCalendarIDsChanged);
    update(m_browserServices, servicesFromStoredForm(list(settingsKey::browserServices)),
           &Preferences::browserServicesChanged);
    update(m_hasCompletedOnboarding,
           flag(settingsKey::hasCompletedOnboarding, registered::hasCompletedOnboarding),
           &Preferences::hasCompletedOnboardingChanged);

    for (const Changed changed : changes)
        Q_EMIT(this->*changed)();
}

template<typename T> void Preferences::assign(T &member, const T &value, Changed changed)
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)();
}

// The setters store what the member holds after the announcement: an observer may have set it once more.

void Preferences::setShowTitle(bool show)
{
    assign(m_showTitle, show, &Preferences::showTitleChanged);
    m_store.setBoolean(settingsKey::showTitle, m_showTitle);
}

void Preferences::setTitleWidth(int characters)
{
    assign(m_titleWidth, characters, &Preferences::titleWidthChanged);
    m_store.setInteger(settingsKey::titleWidth, m_titleWidth);
}

void Preferences::setLeadMinutes(int minutes)
{
    assign(m_leadMinutes, minutes, &Preferences::leadMinutesChanged);
    m_store.setInteger(settingsKey::leadMinutes, m_leadMinutes);
}

void Preferences::setPanelCorner(PanelCorner corner)
{
    assign(m_panelCorner, corner, &Preferences::panelCornerChanged);
    m_store.setString(settingsKey::panelCorner, rawValue(m_panelCorner));
}

void Preferences::setRemindWithoutLink(bool remind)
{
    assign(m_remindWithoutLink, remind, &Preferences::remindWithoutLinkChanged);
    m_store.setBoolean(settingsKey::remindWithoutLink, m_remindWithoutLink);
}

void Preferences::setJoinHotKey(const std::optional<kelo::HotKeyCombo> &combo)
{
    assign(m_joinHotKey, combo, &Preferences::joinHotKeyChanged);
    if (m_joinHotKey)
        m_store.setData(settingsKey::joinHotKey, m_joinHotKey->toJson());
    else
        m_store.remove(settingsKey::joinHotKey);
    Q_EMIT joinHotKeyWasSet();
}

void Preferences::setDisabledCalendarIDs(const std::set<std::string> &ids)
{
    assign(m_disabledCalendarIDs, ids, &Preferences::disabledCalendarIDsChanged);
    m_store.setStringList(settingsKey::disabledCalendarIDs, storedForm(m_disabledCalendarIDs));
}

void Preferences::setBrowserServices(const std::set<Service> &services)
{
    assign(m_browserServices, services, &Preferences::browserServicesChanged);
    m_store.setStringList(settingsKey::browserServices, storedForm(m_browserServices));
}

void Preferences::setHasCompletedOnboarding(bool completed)
{
    assign(m_hasCompletedOnboarding, completed, &Preferences::hasCompletedOnboardingChanged);
    m_store.setBoolean(settingsKey::hasCompletedOnboarding, m_hasCompletedOnboarding);
}

void Preferences::setLaunchAtLogin(bool launch)
{
    if (launch == m_launchAtLogin)
        return;
    assign(m_launchAtLogin, launch, &Preferences::launchAtLoginChanged);
    if (!m_store.isStandard())
        return;
    if (const auto error = m_loginItem.setEnabled(launch))
        writeToSystemLog(QLatin1String("Mivora: launch at login change failed: ") + *error);
}

} // namespace mivora
