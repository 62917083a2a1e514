#pragma once

#include "Calendar/CalendarWays.h"
#include "Meetings/Service.h"
#include "Preferences/Preferences.h"
#include "Settings/CalendarListModel.h"

#include <QObject>
#include <functional>

namespace mivora {

class EventSource;

/// What is done with the calendars that Mivora itself subscribed to.
struct OwnCalendars
{
    std::function<bool(const std::string &id)> isOwn;
    std::function<void(const CalendarInfo &calendar)> edit;
};

/// The state of the Calendars page. Reads and writes the preferences directly, and follows them.
class CalendarsPageModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool hasAccess READ hasAccess NOTIFY accessChanged)
    Q_PROPERTY(bool canAsk READ canAsk NOTIFY accessChanged)
    /// Access is given, and there is no calendar.
    Q_PROPERTY(bool isNothing READ isNothing NOTIFY accessChanged)
    Q_PROPERTY(QObject *prefs READ prefs CONSTANT)
    Q_PROPERTY(QObject *ways READ ways CONSTANT)
    Q_PROPERTY(QAbstractItemModel *calendars READ calendars CONSTANT)
    Q_PROPERTY(bool zoomInBrowser READ zoomInBrowser WRITE setZoomInBrowser NOTIFY browserServicesChanged)
    Q_PROPERTY(bool teamsInBrowser READ teamsInBrowser WRITE setTeamsInBrowser NOTIFY browserServicesChanged)

public:
    /// Preferences, source and ways outlive the model. Asks the source for nothing before the first reload().
    CalendarsPageModel(Preferences &prefs, EventSource &source, CalendarWays &ways, OwnCalendars own);

    /// Asks the source for the permission and the calendars as they are now.
    Q_INVOKABLE void reload();

    bool hasAccess() const { return m_access == CalendarAuthorization::granted && !m_isNothing; }

    bool canAsk() const { return m_access == CalendarAuthorization::notDetermined; }

    bool isNothing() const { return m_isNothing; }

    QObject *prefs() { return &m_prefs; }

    QObject *ways() { return &m_ways; }

    QAbstractItemModel *calendars() { return &m_calendars; }

    /// Switches the calendar of the row on or off for meetings.
    Q_INVOKABLE void setCalendarOn(int row, bool isOn);

    bool zoomInBrowser() const { return isInBrowser(Service::zoom); }

    void setZoomInBrowser(bool inBrowser) { setInBrowser(Service::zoom, inBrowser); }

    bool teamsInBrowser() const { return isInBrowser(Service::teams); }

    void setTeamsInBrowser(bool inBrowser) { setInBrowser(Service::teams, inBrowser); }

    /// Asks for access.
    Q_INVOKABLE void requestAccess();

    /// Shows the calendar of the row, which is one of Mivora's own.
    Q_INVOKABLE void edit(int row) const { m_edit(m_calendars.calendar(row)); }

Q_SIGNALS:
    void accessChanged();
    void browserServicesChanged();

private:
    bool isInBrowser(Service service) const;
    void setInBrowser(Service service, bool inBrowser);

    Preferences &m_prefs;
    EventSource &m_source;
    CalendarWays &m_ways;
    std::function<void(const CalendarInfo &calendar)> m_edit;
    CalendarAuthorization m_access = CalendarAuthorization::denied;
    bool m_isNothing = false;
    CalendarListModel m_calendars;
};

} // namespace mivora
