#pragma once

#include "App/WorkspaceInstalledApps.h"
#include "Calendar/AccessMemory.h"
#include "Calendar/EventKitSource.h"
#include "Platform/DefaultsStore.h"
#include "Platform/LoginItem.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Clock.h"
#include "Scheduling/Scheduler.h"

#include <QJsonObject>
#include <QObject>
#include <QTimeZone>
#include <functional>
#include <memory>

namespace mivora {

/// What a command sees the calendars with.
struct SessionOptions
{
    /// Folders that the user named: they are read in place of the user's own calendars, without asking.
    std::vector<std::string> folders;
    /// The time that is shown at first; the system's when absent.
    std::optional<Timestamp> at;
    /// Whether time goes on from there.
    enum class Time { stands, passes };
    Time time = Time::stands;
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

    /// The agenda as it is now, in its public JSON form.
    QJsonObject agenda() const;

    Preferences &prefs() { return *m_prefs; }

    EventKitSource &source() { return *m_source; }

    Scheduler &scheduler() { return *m_scheduler; }

    const Clock &clock() const { return *m_clock; }

    const QTimeZone &zone() const { return m_zone; }

private:
    QTimeZone m_zone;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<DefaultsStore> m_defaults;
    std::unique_ptr<LoginItem> m_loginItem;
    std::unique_ptr<Workspace> m_workspace;
    WorkspaceInstalledApps m_installed;
    std::unique_ptr<Preferences> m_prefs;
    AccessMemory m_access;
    std::unique_ptr<EventKitSource> m_source;
    std::unique_ptr<Scheduler> m_scheduler;
};

} // namespace mivora
