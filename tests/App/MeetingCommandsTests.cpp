#include "App/MeetingCommands.h"

#include "App/HotKeyRegistration.h"
#include "App/WorkspaceInstalledApps.h"
#include "Scheduling/SchedulerTest.h"
#include "support/FakeHotKeyService.h"
#include "support/FakePasteboard.h"
#include "support/FakeWorkspace.h"

#include <QCoreApplication>

namespace mivora {

namespace {

constexpr char webLink[] = "https://zoom.us/j/123";
constexpr char appLink[] = "zoommtg://zoom.us/join?confno=123";

Meeting zoomMeeting(const std::string &title, const char *start)
{
    EventSnapshot snapshot = makeSnapshot(title, at(start), Seconds(3600));
    snapshot.notes = std::string(webLink).append("?from=").append(title);
    return Meeting::fromSnapshot(snapshot);
}

class Commands : public SchedulerTest
{
public:
    Commands()
    {
        QObject::connect(&commands, &MeetingCommands::linkCopied, &commands,
                         [this](const QString &text) { messages.append(text); });
    }

    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    WorkspaceInstalledApps installed{workspace};
    MeetingCommands commands{scheduler, prefs, installed, workspace, pasteboard};
    QStringList messages;
};

} // namespace

TEST_F(Commands, openTheAppWhereItIsInstalledAndWanted)
{
    struct Case
    {
        QSet<QString> handlers;
        std::set<Service> inBrowser;
        QString opened;
    };

    const QString app = QLatin1String(appLink);
    const QString web = QLatin1String(webLink) + QStringLiteral("?from=A");
    const Case cases[] = {{{QStringLiteral("zoommtg")}, {}, app},
                          {{QStringLiteral("zoommtg")}, {Service::zoom}, web},
                          {{}, {}, web}};
    for (const Case &c : cases) {
        workspace.opened.clear();
        workspace.handlers = c.handlers;
        prefs.setBrowserServices({c.inBrowser.begin(), c.inBrowser.end()});
        commands.join(zoomMeeting("A", "2026-03-10T10:00:00Z"));
        EXPECT_EQ(workspace.opened, QStringList{c.opened});
    }
}

TEST_F(Commands, aRefusedLinkIsCopiedAndStillJoined)
{
    workspace.handlers = {QStringLiteral("zoommtg")};
    workspace.succeeds = false;
    source.events = {zoomMeeting("A", "2026-03-10T10:00:00Z")};
    refreshAt("2026-03-10T10:00:00Z");
    ASSERT_TRUE(scheduler.panelRequest());
    EXPECT_TRUE(commands.joinNext());
    EXPECT_FALSE(scheduler.panelRequest());
    QCoreApplication::processEvents();
    EXPECT_EQ(workspace.opened, QStringList{QLatin1String(appLink)});
    EXPECT_EQ(pasteboard.texts, QStringList{QLatin1String(webLink) + QStringLiteral("?from=A")});
    EXPECT_EQ(messages, QStringList{QStringLiteral("Couldn't open Zoom. Link copied.")});
}

TEST_F(Commands, theNextIsThePanelsMeetingOrTheFirstWithALink)
{
    const Meeting without = makeMeeting("Lunch", at("2026-03-10T09:40:00Z"), Seconds(7200));
    source.events = {without};
    for (const bool hasPanel : {true, false}) {
        prefs.setRemindWithoutLink(hasPanel);
        refreshAt("2026-03-10T10:00:00Z");
        EXPECT_FALSE(commands.joinNext());
        EXPECT_FALSE(commands.copyNext());
        EXPECT_EQ(scheduler.panelRequest().has_value(), hasPanel) << "it is not joined";
    }

    source.events = {without, zoomMeeting("Running", "2026-03-10T09:50:00Z"),
                     zoomMeeting("Later", "2026-03-10T10:30:00Z")};
    const QString link = QLatin1String(webLink) + QStringLiteral("?from=");
    refreshAt("2026-03-10T10:00:00Z");
    scheduler.dismiss(source.events[1].id);
    commands.joinNext();
    refreshAt("2026-03-10T10:29:30Z");
    commands.joinNext();
    EXPECT_EQ(workspace.opened,
              (QStringList{link + QStringLiteral("Running"), link + QStringLiteral("Later")}));
}

TEST_F(Commands, theShortcutFollowsItsSetting)
{
    kelo::FakeHotKeyService service;
    HotKeyRegistration registration(service, prefs, [] {});
    QStringList conflicts;
    QObject::connect(&registration, &HotKeyRegistration::conflict, &registration,
                     [&](const QString &shortcut) { conflicts.append(shortcut); });
    const kelo::HotKeyCombo combo{38, 0x100};
    const kelo::HotKeyCombo other{40, 0x100};

    prefs.setJoinHotKey(combo);
    const auto first = service.registered;
    ASSERT_EQ(first.size(), 1u);
    prefs.setJoinHotKey(combo);
    EXPECT_EQ(service.registered, first) << "the same again is no change";
    prefs.setJoinHotKey(std::nullopt);
    EXPECT_TRUE(service.registered.empty());

    service.isAvailable = false;
    prefs.setJoinHotKey(combo);
    EXPECT_EQ(prefs.joinHotKey(), combo) << "where nothing can be registered, nothing is said of a conflict";
    service.isAvailable = true;
    Q_EMIT service.availabilityChanged();
    EXPECT_EQ(registration.registeredCombo(), combo);

    EXPECT_TRUE(registration.tryToRegister(other));
    EXPECT_EQ(service.registered.size(), 1u) << "in place of the one before";
    service.isTaken = true;
    EXPECT_FALSE(registration.tryToRegister(combo));
    EXPECT_TRUE(registration.tryToRegister(other));
    EXPECT_EQ(service.registered.begin()->second, other) << "the working one stays";
    prefs.setJoinHotKey(std::nullopt);
    prefs.setJoinHotKey(other);
    EXPECT_EQ(prefs.joinHotKey(), std::nullopt);
    EXPECT_EQ(registration.registeredCombo(), std::nullopt);
    EXPECT_TRUE(service.registered.empty());
    EXPECT_EQ(conflicts, QStringList{other.displayString()});
}

} // namespace mivora
