#pragma once

#include "App/AgendaJson.h"
#include "App/MeetingCommands.h"
#include "Calendar/AccessMemory.h"
#include "Calendar/EventKitSource.h"
#include "CalendarEds/DesktopSubscriptions.h"
#include "Platform/linux/GioWorkspace.h"
#include "Platform/linux/XdgLoginItem.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Clock.h"
#include "Scheduling/Scheduler.h"

#include <QJsonObject>
#include <QTimeZone>

namespace mivora {

/// Which calendars are read.
struct StoreOptions
{
    /// Folders in place of the user's own calendars; empty for these.
    std::vector<std::string> folders;
    /// The days around this time are loaded first.
    Timestamp now{};
    QTimeZone zone;
};

/// All of the user's calendars: the folders of iCalendar files and what the desktop keeps, unless $MIVORA_EDS
/// is "none". The user's addresses come from the key "addresses" of `defaults`. `access` must outlive the
/// source.
std::unique_ptr<EventKitSource> makeCalendarSource(const StoreOptions &options, const DefaultsStore &defaults,
                                                   AccessMemory &access);

/// What the user's calendars are subscribed to with; nothing where $MIVORA_EDS is "none".
DesktopSubscriptions::Setup subscriptionSetup(const DefaultsStore &defaults);

/// What a command sees the calendars with.
struct SessionOptions
{
    /// Folders that the user named: they are read in place of the user's own calendars, without asking.
    std::vector<std::string> folders;
    /// The time that is shown at first; the system's when absent.
    std::optional<Timestamp> at;
    /// Whether time goes on from there.
    bool timePasses = false;

    /// Whether the running program shows the same.
    bool isOwnDay() const { return folders.empty() && !at; }
};

/// The core of the program without a desktop around it: calendars, settings and scheduler, for commands. It
/// begins to load at once.
class CalendarSession final : public QObject
{
    Q_OBJECT

public:
    explicit CalendarSession(const SessionOptions &options);

    /// Refreshes, and calls `then` from the event loop, when the calendars have been read, or after a
    /// minute: then `then` is told that not all of them are there.
    void whenLoaded(std::function<void(bool areComplete)> then);

    /// From now on the days are those of the user's time zone as it is now.
    void updateTimeZone();

    /// The agenda as it is now, in its public JSON form, and what it is made from; `all` adds the meetings
    /// that the settings leave out.
    QJsonObject agenda(bool all = false) const;
    AgendaContext agendaContext(bool all = false) const;

    Preferences &prefs() { return m_prefs; }

    EventKitSource &source() { return *m_source; }

    Scheduler &scheduler() { return m_scheduler; }

    const Clock &clock() const { return *m_clock; }

    const QTimeZone &zone() const { return m_zone; }

private:
    QTimeZone m_zone;
    std::unique_ptr<Clock> m_clock;
    JsonDefaultsStore m_defaults;
    XdgLoginItem m_loginItem{XdgLoginItem::Places::ofThisProcess()};
    GioWorkspace m_workspace;
    WorkspaceInstalledApps m_installed{m_workspace};
    Preferences m_prefs{m_defaults, m_loginItem};
    AccessMemory m_access;
    std::unique_ptr<EventKitSource> m_source;
    Scheduler m_scheduler{*m_source, m_prefs, *m_clock};
};

} // namespace mivora
