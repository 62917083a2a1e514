#include "Preferences/Preferences.h"

#include "Platform/DefaultsStore.h"
#include "Platform/LoginItem.h"
#include "Platform/SystemLog.h"
#include "Preferences/Settings.h"

#include <QJsonArray>
#include <algorithm>

namespace mivora {

namespace {

// What was set is used as it was given until the next start, also when another setting is read in anew: so a
// stored value that is the current one stays.

int readTitleWidth(qint64 stored, int current)
{
    if (stored == current)
        return current;
    return int(std::clamp<qint64>(stored, Preferences::minTitleWidth, Preferences::maxTitleWidth));
}

int readLeadMinutes(qint64 stored, int current)
{
    constexpr int registered = 1;
    const auto &choices = Preferences::leadMinuteChoices;
    const bool isUsable = stored == current || std::ranges::find(choices, stored) != choices.end();
    return isUsable ? int(stored) : registered;
}

std::optional<kelo::HotKeyCombo> readJoinHotKey(const QString &stored)
{
    const auto combo = kelo::HotKeyCombo::fromJson(stored.toUtf8());
    // Virtual key codes have 16 bits; more can only come from a file edited by hand, and names no key.
    return combo && combo->keyCode <= 0xFFFF ? combo : std::nullopt;
}

std::set<std::string> readStrings(const QStringList &stored)
{
    std::set<std::string> strings;
    for (const QString &string : stored)
        strings.insert(string.toStdString());
    return strings;
}

/// Names that no service has are left out.
std::set<Service> readServices(const QStringList &stored)
{
    std::set<Service> services;
    for (const QString &name : stored) {
        if (const auto service = serviceFromRawValue(name.toStdString()))
            services.insert(*service);
    }
    return services;
}

QJsonArray storedForm(const std::set<std::string> &strings)
{
    QJsonArray list;
    for (const std::string &string : strings)
        list.append(QString::fromStdString(string));
    return list;
}

/// In the order of the names, not in that of the enumeration.
std::set<std::string> namesOf(const std::set<Service> &services)
{
    std::set<std::string> names;
    for (const Service service : services)
        names.emplace(rawValue(service));
    return names;
}

} // namespace

Preferences::Preferences(DefaultsStore &store, LoginItem &loginItem, QObject *parent)
    : QObject(parent), m_store(store), m_loginItem(loginItem)
{
    readStore();
    readLaunchAtLogin();
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
    const auto stored = [this](QLatin1String key) { return settingNamed(key)->readFrom(m_store); };

    update(m_showTitle, stored(settingsKey::showTitle).toBool(), &Preferences::showTitleChanged);
    update(m_titleWidth, readTitleWidth(stored(settingsKey::titleWidth).toInteger(), m_titleWidth),
           &Preferences::titleWidthChanged);
    update(m_hideTitleWhileInhibited, stored(settingsKey::hideTitleWhileInhibited).toBool(),
           &Preferences::hideTitleWhileInhibitedChanged);
    update(m_leadMinutes, readLeadMinutes(stored(settingsKey::leadMinutes).toInteger(), m_leadMinutes),
           &Preferences::leadMinutesChanged);
    update(
        m_panelCorner,
        panelCornerFromRawValue(stored(settingsKey::panelCorner).toString()).value_or(PanelCorner::topRight),
        &Preferences::panelCornerChanged);
    update(m_remindWithoutLink, stored(settingsKey::remindWithoutLink).toBool(),
           &Preferences::remindWithoutLinkChanged);
    if (update(m_joinHotKey, readJoinHotKey(stored(settingsKey::joinHotKey).toString()),
               &Preferences::joinHotKeyChanged))
        changes.push_back(&Preferences::joinHotKeyWasSet);
    update(m_disabledCalendarIDs, readStrings(storedList(m_store, settingsKey::disabledCalendarIDs)),
           &Preferences::disabledCalendarIDsChanged);
    update(m_ignoredTitles, storedList(m_store, settingsKey::ignoredTitles), &Preferences::ignoredChanged);
    update(m_ignoreUnanswered, stored(settingsKey::ignoreUnanswered).toBool(), &Preferences::ignoredChanged);
    update(m_ignoreWithoutOthers, stored(settingsKey::ignoreWithoutOthers).toBool(),
           &Preferences::ignoredChanged);
    update(m_browserServices, readServices(storedList(m_store, settingsKey::browserServices)),
           &Preferences::browserServicesChanged);
    update(m_hasCompletedOnboarding, stored(settingsKey::hasCompletedOnboarding).toBool(),
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
    m_store.setValue(settingsKey::showTitle, m_showTitle);
}

void Preferences::setTitleWidth(int characters)
{
    assign(m_titleWidth, characters, &Preferences::titleWidthChanged);
    m_store.setValue(settingsKey::titleWidth, m_titleWidth);
}

void Preferences::setHideTitleWhileInhibited(bool hide)
{
    assign(m_hideTitleWhileInhibited, hide, &Preferences::hideTitleWhileInhibitedChanged);
    m_store.setValue(settingsKey::hideTitleWhileInhibited, m_hideTitleWhileInhibited);
}

void Preferences::setLeadMinutes(int minutes)
{
    assign(m_leadMinutes, minutes, &Preferences::leadMinutesChanged);
    m_store.setValue(settingsKey::leadMinutes, m_leadMinutes);
}

void Preferences::setPanelCorner(PanelCorner corner)
{
    assign(m_panelCorner, corner, &Preferences::panelCornerChanged);
    m_store.setValue(settingsKey::panelCorner, rawValue(m_panelCorner));
}

void Preferences::setRemindWithoutLink(bool remind)
{
    assign(m_remindWithoutLink, remind, &Preferences::remindWithoutLinkChanged);
    m_store.setValue(settingsKey::remindWithoutLink, m_remindWithoutLink);
}

void Preferences::setJoinHotKey(const std::optional<kelo::HotKeyCombo> &combo)
{
    assign(m_joinHotKey, combo, &Preferences::joinHotKeyChanged);
    m_store.setValue(settingsKey::joinHotKey, m_joinHotKey ? QString::fromUtf8(m_joinHotKey->toJson())
                                                           : QJsonValue(QJsonValue::Undefined));
    Q_EMIT joinHotKeyWasSet();
}

void Preferences::setDisabledCalendarIDs(const std::set<std::string> &ids)
{
    assign(m_disabledCalendarIDs, ids, &Preferences::disabledCalendarIDsChanged);
    m_store.setValue(settingsKey::disabledCalendarIDs, storedForm(m_disabledCalendarIDs));
}

void Preferences::setIgnoredTitles(const QStringList &patterns)
{
    assign(m_ignoredTitles, patterns, &Preferences::ignoredChanged);
    m_store.setValue(settingsKey::ignoredTitles, QJsonArray::fromStringList(m_ignoredTitles));
}

void Preferences::setIgnoreUnanswered(bool ignore)
{
    assign(m_ignoreUnanswered, ignore, &Preferences::ignoredChanged);
    m_store.setValue(settingsKey::ignoreUnanswered, m_ignoreUnanswered);
}

void Preferences::setIgnoreWithoutOthers(bool ignore)
{
    assign(m_ignoreWithoutOthers, ignore, &Preferences::ignoredChanged);
    m_store.setValue(settingsKey::ignoreWithoutOthers, m_ignoreWithoutOthers);
}

void Preferences::setBrowserServices(const std::set<Service> &services)
{
    assign(m_browserServices, services, &Preferences::browserServicesChanged);
    m_store.setValue(settingsKey::browserServices, storedForm(namesOf(m_browserServices)));
}

void Preferences::setHasCompletedOnboarding(bool completed)
{
    assign(m_hasCompletedOnboarding, completed, &Preferences::hasCompletedOnboardingChanged);
    m_store.setValue(settingsKey::hasCompletedOnboarding, m_hasCompletedOnboarding);
}

void Preferences::setLaunchAtLogin(bool launch)
{
    if (launch == m_launchAtLogin)
        return;
    assign(m_launchAtLogin, launch, &Preferences::launchAtLoginChanged);
    if (!m_store.isStandard())
        return;
    if (const auto error = m_loginItem.setEnabled(launch)) {
        writeToSystemLog(QLatin1String("Mivora: launch at login change failed: ") + *error);
        Q_EMIT launchAtLoginFailed();
    }
}

void Preferences::readLaunchAtLogin()
{
    assign(m_launchAtLogin, m_store.isStandard() && m_loginItem.isEnabled(),
           &Preferences::launchAtLoginChanged);
}

} // namespace mivora
