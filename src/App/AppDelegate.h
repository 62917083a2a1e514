#pragma once

#include "App/MeetingCommands.h"
#include "App/WorkspaceInstalledApps.h"
#include "Calendar/EventKitSource.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Clock.h"
#include "Scheduling/Scheduler.h"
#include "StatusBar/StatusController.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <memory>

namespace kelo {
class HotKeyService;
class ToastController;
class Updater;
class ViewHost;
} // namespace kelo

namespace mivora {

class ApplicationService;
class HotKeyRegistration;
class JoinPanelController;
class SystemEvents;

/// What the application is made of that depends on the operating system, or on the test. References must outlive
/// the delegate.
struct AppParts
{
    Workspace &workspace;
    Pasteboard &pasteboard;
    LoginItem &loginItem;
    DefaultsStore &defaults;
    SystemEvents &systemEvents;
    kelo::HotKeyService &hotKeys;
    const Clock &clock;
    /// The session bus; it need not be connected.
    QDBusConnection bus;
    std::unique_ptr<EventStore> store;
};

/// Owns every long-lived object of the running application and connects them; decides nothing itself. Main thread
/// only.
class AppDelegate final : public QObject
{
    Q_OBJECT

public:
    static constexpr int tickMilliseconds = 30'000;

    explicit AppDelegate(AppParts parts, QObject *parent = nullptr);
    ~AppDelegate() override;

    /// Builds everything, in order, and starts: the status item, the shortcut, the timer and the first refresh.
    void launch();

    Preferences &prefs() { return m_prefs; }
    Scheduler &scheduler() { return *m_scheduler; }
    StatusController &status() { return *m_status; }

private:
    void buildMenu(kelo::Menu &menu);
    void panelRequestChanged(const std::optional<Meeting> &meeting);
    void refreshed();
    void installObservers();

    AppParts m_parts;
    Preferences m_prefs;
    EventKitSource m_source;
    WorkspaceInstalledApps m_installed;
    std::unique_ptr<Scheduler> m_scheduler;
    std::unique_ptr<MeetingCommands> m_commands;
    std::unique_ptr<StatusController> m_status;
    QTimer m_tick;
    std::unique_ptr<HotKeyRegistration> m_hotKey;
    std::unique_ptr<ApplicationService> m_service;
};

} // namespace mivora
