#include "Settings/CalendarsPageModel.h"

#include "Calendar/EventSource.h"
#include "Platform/Workspace.h"
#include "Preferences/Preferences.h"

namespace mivora {

namespace {

template<typename T> std::set<T> with(std::set<T> set, const T &value, bool isIn)
{
    if (isIn)
        set.insert(value);
    else
        set.erase(value);
    return set;
}

} // namespace

CalendarsPageModel::CalendarsPageModel(Preferences &prefs, const EventSource &source,
                                       LinkOpener openSystemSettings)
    : m_prefs(prefs), m_source(source), m_openSystemSettings(std::move(openSystemSettings))
{
    m_calendars.setDisabled(m_prefs.disabledCalendarIDs());
    connect(&m_prefs, &Preferences::disabledCalendarIDsChanged, &m_calendars,
            [this] { m_calendars.setDisabled(m_prefs.disabledCalendarIDs()); });
    connect(&m_prefs, &Preferences::browserServicesChanged, this,
            &CalendarsPageModel::browserServicesChanged);
}

void CalendarsPageModel::reload()
{
    const bool hasAccess = m_source.authorization() == CalendarAuthorization::granted;
    m_calendars.setCalendars(hasAccess ? m_source.calendars() : std::vector<CalendarInfo>());
    if (hasAccess == m_hasAccess)
        return;
    m_hasAccess = hasAccess;
    Q_EMIT hasAccessChanged();
}

void CalendarsPageModel::setCalendarOn(int row, bool isOn)
{
    const std::string id = m_calendars.calendarID(row);
    if (id.empty())
        return;
    m_prefs.setDisabledCalendarIDs(with(m_prefs.disabledCalendarIDs(), id, !isOn));
}

void CalendarsPageModel::openSystemSettings() const
{
    m_openSystemSettings(QLatin1String(calendarPrivacyLink));
}

bool CalendarsPageModel::isInBrowser(Service service) const
{
    return m_prefs.browserServices().contains(service);
}

void CalendarsPageModel::setInBrowser(Service service, bool inBrowser)
{
    m_prefs.setBrowserServices(with(m_prefs.browserServices(), service, inBrowser));
}

} // namespace mivora
