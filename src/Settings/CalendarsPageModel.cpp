#include "Settings/CalendarsPageModel.h"

#include "Calendar/EventSource.h"

#include <QPointer>
#include <utility>

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

CalendarsPageModel::CalendarsPageModel(Preferences &prefs, EventSource &source, CalendarWays &ways,
                                       OwnCalendars own)
    : m_prefs(prefs), m_source(source), m_ways(ways), m_edit(std::move(own.edit)),
      m_calendars(std::move(own.isOwn))
{
    m_calendars.setDisabled(m_prefs.disabledCalendarIDs());
    connect(&m_prefs, &Preferences::disabledCalendarIDsChanged, &m_calendars,
            [this] { m_calendars.setDisabled(m_prefs.disabledCalendarIDs()); });
    connect(&m_prefs, &Preferences::browserServicesChanged, this,
            &CalendarsPageModel::browserServicesChanged);
}

void CalendarsPageModel::reload()
{
    m_calendars.setCalendars(m_source.calendars());
    const auto before = std::exchange(m_access, m_source.authorization());
    const bool wasNothing = std::exchange(m_isNothing, m_source.isNothingToRead());
    if (m_access != before || m_isNothing != wasNothing)
        Q_EMIT accessChanged();
}

void CalendarsPageModel::requestAccess()
{
    m_source.requestAccess([page = QPointer(this)](bool) {
        if (page)
            page->reload();
    });
}

void CalendarsPageModel::setCalendarOn(int row, bool isOn)
{
    const std::string id = m_calendars.calendar(row).id;
    if (id.empty())
        return;
    m_prefs.setDisabledCalendarIDs(with(m_prefs.disabledCalendarIDs(), id, !isOn));
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
