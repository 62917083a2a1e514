#pragma once

#include "Meetings/Service.h"
#include "Settings/CalendarListModel.h"

#include <QObject>
#include <functional>

namespace mivora {

class EventSource;
class Preferences;

/// The state of the Calendars page. Reads and writes the preferences directly, and follows them.
class CalendarsPageModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool hasAccess READ hasAccess NOTIFY hasAccessChanged)
    Q_PROPERTY(QAbstractItemModel *calendars READ calendars CONSTANT)
    Q_PROPERTY(bool zoomInBrowser READ zoomInBrowser WRITE setZoomInBrowser NOTIFY browserServicesChanged)
    Q_PROPERTY(bool teamsInBrowser READ teamsInBrowser WRITE setTeamsInBrowser NOTIFY browserServicesChanged)

public:
    using LinkOpener = std::function<void(const QString &deepLink)>;

    /// Preferences and source outlive the model. Asks the source for nothing before the first reload().
    CalendarsPageModel(Preferences &prefs, const EventSource &source, LinkOpener openSystemSettings);

    /// Asks the source for the permission and the calendars as they are now.
    Q_INVOKABLE void reload();

    bool hasAccess() const { return m_hasAccess; }

    QAbstractItemModel *calendars() { return &m_calendars; }

    /// Switches the calendar of the row on or off for meetings.
    Q_INVOKABLE void setCalendarOn(int row, bool isOn);

    bool zoomInBrowser() const { return isInBrowser(Service::zoom); }

    void setZoomInBrowser(bool inBrowser) { setInBrowser(Service::zoom, inBrowser); }

    bool teamsInBrowser() const { return isInBrowser(Service::teams); }

    void setTeamsInBrowser(bool inBrowser) { setInBrowser(Service::teams, inBrowser); }

    /// Leads to where the desktop lets the user allow access to calendars.
    Q_INVOKABLE void openSystemSettings() const;

Q_SIGNALS:
    void hasAccessChanged();
    void browserServicesChanged();

private:
    bool isInBrowser(Service service) const;
    void setInBrowser(Service service, bool inBrowser);

    Preferences &m_prefs;
    const EventSource &m_source;
    LinkOpener m_openSystemSettings;
    bool m_hasAccess = false;
    CalendarListModel m_calendars;
};

} // namespace mivora
