#pragma once

#include "App/BusCommand.h"
#include "App/MeetingCommands.h"
#include "Calendar/CalendarWays.h"
#include "Calendar/EventKitSource.h"
#include "JoinPanel/JoinPanelController.h"
#include "KeloPanel/ToastController.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "Platform/Workspace.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Clock.h"
#include "Scheduling/Scheduler.h"
#include "Settings/SettingsRouter.h"
#include "StatusBar/StatusController.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

namespace kelo {
class HotKeyService;
class MenuWindow;
class NotificationInhibition;
class Updater;
} // namespace kelo

namespace mivora {

class ConflictAlert;
class HotKeyRegistration;
class OnboardingFlow;
class SettingsWindowController;
class SubscriptionDialog;
class SystemEvents;
struct AgendaContext;

/// What the application is made of that depends on the operating system, or on the test. References must
/// outlive the delegate.
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
    std::unique_ptr<EventKitSource> source;
};

/// Owns every long-lived object of the running application and connects them; decides nothing itself. Main
/// thread only.
class AppDelegate final : public QObject
{
    Q_OBJECT

public:
    static constexpr int tickMilliseconds = 30'000;

    explicit AppDelegate(AppParts parts);
    ~AppDelegate() override;

    /// Builds everything, in order, and starts: status item, shortcut, first refresh, timer.
    void launch();

    Preferences &prefs() { return m_prefs; }

    Scheduler &scheduler() { return *m_scheduler; }

    JoinPanelController &panel() { return *m_panel; }

    /// The program was started once more while it runs: brings up the settings, on the page last shown.
    void reopen();

    /// Asks whether to subscribe to the calendar that `link` leads to, or else for an address.
    void offerCalendar(const QString &link = {});

    /// Has the command line's verb `action` done.
    CommandResult perform(const QString &action, const QString &argument);

    /// The same for a command that came over the bus. One about meetings that can't be done with what is
    /// known of the calendars waits while these are read for the first time, but not longer than its caller
    /// does.
    void perform(const BusCommand &command);

    /// The agenda in its public JSON form; `all` adds the meetings that the settings leave out.
    QJsonObject agenda(bool all = false) const;

Q_SIGNALS:
    /// After every refresh.
    void refreshed();
    /// A name of meetingEvent, and the meeting as the agenda has it.
    void happened(const char *event, const QJsonObject &meeting);

private:
    void makePanel();
    void makeStatus();
    void makeOnboarding();
    void installObservers();
    void hotKeyChanged();
    void calendarsChanged();
    void takeInChanges();
    void performWaiting();
    void tellUnsavedSettings(const QString &reason);
    bool openSettings(std::optional<SettingsPage> page);
    bool showToday();
    void tellTrayHint();
    void openLink(const QString &link);
    SubscriptionDialog &subscriptionDialog();
    void buildMenu(kelo::Menu &menu);
    void panelRequestChanged(const std::optional<Meeting> &meeting);
    void showRefreshed();
    void timeZoneChanged();
    CommandResult performSettings(const QString &page);
    CommandResult performTitle(const QString &wish);
    bool isDiscreet() const;
    void followInhibition();
    CommandResult performOnPanel(void (Scheduler::*decision)(const std::string &));
    AgendaContext agendaContext() const;

    AppParts m_parts;
    Preferences m_prefs;
    EventKitSource &m_source;
    WorkspaceInstalledApps m_installed;
    kelo::Appearance m_appearance;
    kelo::ViewLoader m_views;
    CalendarWays m_ways{
        {.open = [this](const QString &link) { openLink(link); },
         .leadsSomewhere = [this](const QString &link) { return m_parts.workspace.leadsSomewhere(link); },
         .subscribe = [this] { offerCalendar(); }}};
    std::unique_ptr<kelo::Updater> m_updater;
    kelo::ToastController m_toast;
    std::unique_ptr<Scheduler> m_scheduler;
    std::unique_ptr<MeetingCommands> m_commands;
    std::unique_ptr<JoinPanelController> m_panel;
    std::unique_ptr<StatusController> m_status;
    QTimer m_tick;
    std::unique_ptr<HotKeyRegistration> m_hotKey;
    std::unique_ptr<ConflictAlert> m_alert;
    std::unique_ptr<SettingsWindowController> m_settingsWindow;
    std::unique_ptr<OnboardingFlow> m_onboarding;
    std::unique_ptr<kelo::MenuWindow> m_today;
    std::unique_ptr<SubscriptionDialog> m_subscriptionDialog;
    bool m_areChangesDue = false;
    /// Whether the user has hidden the titles of meetings, until the program ends.
    bool m_hidesTitles = false;
    /// There while the user wants them hidden by it.
    std::unique_ptr<kelo::NotificationInhibition> m_inhibition;

    struct WaitingCommand
    {
        BusCommand command;
        QDeadlineTimer patience;
    };

    std::vector<WaitingCommand> m_waiting;
};

} // namespace mivora
