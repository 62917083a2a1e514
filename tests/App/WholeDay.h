#pragma once

#include "App/ApplicationService.h"
#include "App/commands/CommandLine.h"
#include "Calendar/AccessMemory.h"
#include "Calendar/CalendarFolder.h"
#include "FakeSurroundings.h"
#include "KeloMenuBar/FakeHost.h"
#include "Platform/linux/JsonDefaultsStore.h"
#include "support/PrivateBus.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace mivora {

/// What a user has before them, and what was opened for them.
struct Seen
{
    /// The text in the tray; "!" after it where it is orange, "?" where access to calendars is missing.
    std::string tray;
    /// The menu above its commands; labels in parentheses, "-" for a line between.
    std::vector<std::string> menu{};
    /// "Standup, Starts in 1m, Zoom"; empty when there is no panel.
    std::string panel{};
    /// The links opened since the last look.
    std::vector<std::string> opened{};

    friend bool operator==(const Seen &, const Seen &) = default;
};

std::ostream &operator<<(std::ostream &stream, const Seen &seen);

/// A user's day with Mivora: settings in a file, calendars in a folder, the item in a tray. Time passes when
/// the test says so.
class WholeDay : protected FakeSurroundings
{
public:
    /// The application starts at the first start(). Local time is `zone`'s.
    explicit WholeDay(const char *zone);
    ~WholeDay();
    Q_DISABLE_COPY_MOVE(WholeDay)

    /// The walkthrough has been gone through, and calendars may be read. To be called before start().
    void skipFirstRun();

    void start();
    /// Quits and starts, as after a new login.
    void restart();

    /// The application is running and awake until `time`, and looks at the clock as often as it does.
    void passUntil(Timestamp time);
    /// The machine sleeps until `time`.
    void sleepUntil(Timestamp time);

    void travelTo(const char *zone);

    /// Buttons of a window, found by their texts; a failure of the test when there is none.
    void pressInPanel(const char *button);
    void pressInWalkthrough(const char *button);
    /// Chooses the menu's entry that begins with `text`; a failure when there is none.
    void chooseInMenu(const char *text);

    void pressShortcut() { hotKeys.press(kelo::HotKeyCombo::defaultCombo); }

    void setShortcut();

    CalendarFolder &calendars() { return m_calendars; }

    support::PrivateBus &bus() { return m_bus; }

    /// What was opened until now is not among what is seen from now on.
    void forgetOpened() { workspace.opened.clear(); }

    /// Somebody on the bus asks for the agenda.
    void askForAgenda() { call(agendaInterface, "Agenda", {}); }

    /// `mivora join` and its like.
    void command(const char *action)
    {
        call(applicationInterface, "ActivateAction", {QLatin1String(action), QVariantList(), QVariantMap()});
    }

    Seen seen();

    bool isWalkthroughShown() const { return walkthrough() != nullptr; }

    /// The texts of the menu's commands.
    std::vector<std::string> menuCommands();

    /// Everything that the application has written into files.
    std::string written() const;

private:
    void call(const char *interface, const char *method, const QVariantList &arguments);
    std::vector<std::pair<int, std::string>> menuEntries();
    std::string panelText() const;
    static QWindow *walkthrough();

    QByteArray m_outerZone = qgetenv("TZ");
    QTemporaryDir m_home;
    CalendarFolder m_calendars;
    support::PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connection();
    std::unique_ptr<FakeHost> m_tray = std::make_unique<FakeHost>(m_bus);
    std::unique_ptr<JsonDefaultsStore> m_defaults;
    std::unique_ptr<AccessMemory> m_access;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<ApplicationService> m_service;
};

} // namespace mivora
