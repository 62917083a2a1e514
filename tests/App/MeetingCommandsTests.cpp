#include "App/HotKeyRegistration.h"
#include "FakeSurroundings.h"
#include "Scheduling/SchedulerTest.h"

namespace mivora {

namespace {

const std::string webLink = "https://zoom.us/j/123?from=";
const QString appLink = QStringLiteral("zoommtg://zoom.us/join?confno=123");

QString webLinkOf(const char *title)
{
    return QString::fromStdString(webLink + title);
}

Meeting zoomMeeting(const std::string &title, const char *start)
{
    EventSnapshot snapshot = makeSnapshot(title, at(start), Seconds(3600));
    snapshot.notes = webLink + title;
    return Meeting::fromSnapshot(snapshot);
}

class Commands : public SchedulerTest
{
public:
    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    WorkspaceInstalledApps installed{workspace};
    MeetingCommands commands{scheduler, prefs, installed, workspace, pasteboard};
};

} // namespace

TEST_F(Commands, openTheAppWhereItIsInstalledAndWanted)
{
    workspace.handlers = {QStringLiteral("zoommtg")};
    commands.join(zoomMeeting("A", "2026-03-10T10:00:00Z"));
    prefs.setBrowserServices({Service::zoom});
    commands.join(zoomMeeting("A", "2026-03-10T10:00:00Z"));
    workspace.handlers = {QStringLiteral("msteams")};
    prefs.setBrowserServices({Service::teams});
    commands.join(zoomMeeting("A", "2026-03-10T10:00:00Z"));
    EXPECT_EQ(workspace.opened, (QStringList{appLink, webLinkOf("A"), webLinkOf("A")}));
    EXPECT_TRUE(installed.isInstalled(Service::teams) && installed.isInstalled(Service::facetime));
    EXPECT_FALSE(installed.isInstalled(Service::meet));
}

TEST_F(Commands, aRefusedLinkIsCopiedAndStillJoined)
{
    QStringList messages;
    QObject::connect(&commands, &MeetingCommands::linkCopied, &commands,
                     [&](const QString &text) { messages.append(text); });
    workspace.handlers = {QStringLiteral("zoommtg")};
    workspace.succeeds = false;
    source.events = {zoomMeeting("A", "2026-03-10T10:00:00Z")};
    refreshAt("2026-03-10T10:00:00Z");
    ASSERT_TRUE(scheduler.panelRequest());
    EXPECT_TRUE(commands.joinNext());
    EXPECT_FALSE(scheduler.panelRequest());
    QCoreApplication::processEvents();
    EXPECT_EQ(workspace.opened, QStringList{appLink});
    EXPECT_EQ(pasteboard.texts, QStringList{webLinkOf("A")});
    EXPECT_EQ(messages, QStringList{QStringLiteral("Couldn't open Zoom. Link copied.")});
}

TEST_F(Commands, theNextIsThePanelsMeetingOrTheFirstWithALink)
{
    const Meeting without = makeMeeting("Lunch", at("2026-03-10T09:40:00Z"), Seconds(7200));
    source.events = {without};
    for (const bool hasPanel : {true, false}) {
        prefs.setRemindWithoutLink(hasPanel);
        refreshAt("2026-03-10T10:00:00Z");
        EXPECT_FALSE(commands.joinNext() || commands.copyNext());
        EXPECT_EQ(scheduler.panelRequest().has_value(), hasPanel) << "it is not joined";
    }

    source.events = {without, zoomMeeting("Running", "2026-03-10T09:50:00Z"),
                     zoomMeeting("Later", "2026-03-10T10:30:00Z")};
    refreshAt("2026-03-10T10:00:00Z");
    scheduler.dismiss(source.events[1].id);
    commands.joinNext();
    refreshAt("2026-03-10T10:29:30Z");
    commands.joinNext();
    EXPECT_EQ(workspace.opened, (QStringList{webLinkOf("Running"), webLinkOf("Later")}));
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
    service.isTaken = true;
    EXPECT_FALSE(registration.tryToRegister(combo));
    EXPECT_TRUE(registration.tryToRegister(other));
    ASSERT_EQ(service.registered.size(), 1u) << "in place of the one before";
    EXPECT_EQ(service.registered.begin()->second, other) << "the working one stays";
    prefs.setJoinHotKey(std::nullopt);
    prefs.setJoinHotKey(other);
    EXPECT_TRUE(service.registered.empty() && !prefs.joinHotKey() && !registration.registeredCombo());
    EXPECT_EQ(conflicts, QStringList{other.displayString()});
}

} // namespace mivora
