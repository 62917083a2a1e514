#include "App/AgendaJson.h"
#include "App/AgendaTable.h"
#include "App/HotKeyRegistration.h"
#include "App/WindowSystem.h"
#include "App/commands/Rfc3339.h"
#include "FakeSurroundings.h"
#include "Scheduling/SchedulerTest.h"

#include <QJsonDocument>

// What is told of today's meetings, and what can be done about them.
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

EventSnapshot designReview()
{
    EventSnapshot snapshot = makeSnapshot("Design review", at("2026-03-10T10:00:00Z"));
    snapshot.calendarColor = Color{1, 2, 3};
    snapshot.participation = Participation::tentative;
    snapshot.attendeeCount = 3;
    snapshot.notes = "https://zoom.us/j/123?pwd=abc";
    return snapshot;
}

class App : public SchedulerTest
{
public:
    QJsonObject json(bool isDiscreet = false)
    {
        return agendaJson({.scheduler = scheduler,
                           .source = source,
                           .prefs = prefs,
                           .installed = installed,
                           .now = clock.time,
                           .zone = QTimeZone::utc(),
                           .joinHotKey = QStringLiteral("⌘J"),
                           .isDiscreet = isDiscreet});
    }

    FakeWorkspace workspace;
    FakePasteboard pasteboard;
    WorkspaceInstalledApps installed{workspace};
    MeetingCommands commands{scheduler, prefs, installed, workspace, pasteboard};
};

} // namespace

TEST_F(App, opensTheServicesAppWhereItIsInstalledAndWanted)
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

TEST_F(App, copiesALinkThatIsRefusedAndStillJoins)
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

TEST_F(App, joinsThePanelsMeetingOrTheFirstWithALink)
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

TEST_F(App, registersTheShortcutThatIsSet)
{
    kelo::FakeHotKeyService service;
    HotKeyRegistration registration(service, prefs, [] {});
    QString conflict;
    QObject::connect(&registration, &HotKeyRegistration::conflict,
                     [&](const QString &shortcut) { conflict = shortcut; });
    const kelo::HotKeyCombo combo{38, 0x100}, other{40, 0x100};

    prefs.setJoinHotKey(combo);
    EXPECT_TRUE(registration.tryToRegister(other));
    ASSERT_EQ(service.registered.size(), 1u) << "in place of the one before";
    const auto before = service.registered;
    prefs.setJoinHotKey(other);
    service.isTaken = true;
    EXPECT_FALSE(registration.tryToRegister(combo));
    EXPECT_EQ(service.registered, before) << "the same again is no change, and the working one stays";
    prefs.setJoinHotKey(combo);
    EXPECT_TRUE(service.registered.empty() && !prefs.joinHotKey());
    EXPECT_EQ(registration.state().kind, kelo::HotKeyState::Kind::taken) << "why it is off";
    EXPECT_EQ(conflict, combo.text());
}

TEST_F(App, keepsAShortcutThatTheDesktopMayYetGiveAndDropsOneThatItWont)
{
    using enum kelo::HotKeyState::Kind;
    kelo::FakeHotKeyService service;
    HotKeyRegistration registration(service, prefs, [] {});
    const kelo::HotKeyState inUse{taken, QStringLiteral("keys")}, bound{registered, QStringLiteral("others")};

    const std::pair<std::vector<kelo::HotKeyState>, bool> rows[] = {
        {{{waiting}, bound, {ended}, {waiting}}, true},
        {{{waiting}, {refused}}, true},
        {{{impossible}}, true},
        {{bound, inUse, inUse, bound}, true},
        {{{waiting}, inUse}, false},
        {{{waiting}, {cancelled}}, false},
    };
    for (const auto &[told, remains] : rows) {
        service.answer = told[0];
        prefs.setJoinHotKey(kelo::HotKeyCombo::defaultCombo);
        for (const kelo::HotKeyState &state : told) {
            service.tell(state);
            QCoreApplication::processEvents();
            EXPECT_EQ(registration.state(), state);
        }
        EXPECT_EQ(prefs.joinHotKey().has_value(), remains) << int(told.back().kind);
        service.tell({off});
        QCoreApplication::processEvents();
        EXPECT_EQ(registration.state().kind, remains ? off : told.back().kind) << "the reason stays";
        prefs.setJoinHotKey(std::nullopt);
    }
}

TEST_F(App, tellsItsAgendaAsOneStableObject)
{
    workspace.handlers = {QStringLiteral("zoommtg")};
    source.events = {Meeting::fromSnapshot(designReview())};
    refreshAt("2026-03-10T09:59:30Z");
    const QByteArray expected = R"({
        "now": "2026-03-10T09:59:30+00:00", "authorization": "granted", "tomorrow": [],
        "today": [{"id": "Design review@1773136800", "title": "Design review",
                   "start": "2026-03-10T10:00:00+00:00", "end": "2026-03-10T10:30:00+00:00",
                   "calendarID": "work", "calendarColor": "#010203", "isAllDay": false,
                   "participation": "tentative", "attendeeCount": 3,
                   "joinLink": {"service": "zoom", "webURL": "https://zoom.us/j/123?pwd=abc",
                                "nativeURL": "zoommtg://zoom.us/join?confno=123&pwd=abc"},
                   "linkToOpen": "zoommtg://zoom.us/join?confno=123&pwd=abc"}],
        "next": "Design review@1773136800", "panelRequest": "Design review@1773136800",
        "statusItem": {"title": " Design review · now", "urgent": true, "icon": "calendar.badge.clock",
                       "toolTip": null},
        "menu": [{"title": "10:00  Design review  · Zoom", "enabled": true, "keyEquivalent": ""},
                 {"separator": true},
                 {"title": "Join Next Meeting   ⌘J", "enabled": true, "keyEquivalent": ""},
                 {"title": "Settings…", "enabled": true, "keyEquivalent": ","},
                 {"title": "More Kelo apps…", "enabled": true, "keyEquivalent": ""},
                 {"separator": true},
                 {"title": "Quit Mivora", "enabled": true, "keyEquivalent": "q"}],
        "panel": {"title": "Design review", "timeText": "Starting now", "hasStarted": false,
                  "serviceName": "Zoom"}})";
    EXPECT_EQ(QJsonDocument(json()).toJson().toStdString(),
              QJsonDocument::fromJson(expected).toJson().toStdString());
    const QJsonObject discreet = json(true);
    EXPECT_EQ(discreet[u"statusItem"][u"title"], QStringLiteral(" Zoom · now"));
    EXPECT_EQ(discreet[u"panel"][u"title"], QStringLiteral("Meeting"));
}

TEST_F(App, printsItsAgendaPlainOrColoured)
{
    const Meeting review = Meeting::fromSnapshot(designReview());
    // The same meeting in a second calendar: one of the two is the next.
    source.events = {review, review,
                     makeMeeting("日本\n\033[1m" + std::string(400, 'x'), at("2026-03-10T11:00:00Z"))};
    refreshAt("2026-03-10T08:00:00Z");
    const std::string plain = agendaTable(json(), QTimeZone::utc(), {}).toStdString();
    EXPECT_EQ(plain.substr(plain.find('\n') + 1),
              "→ 10:00 – 10:30  Design review                                                 Zoom\n"
              "  10:00 – 10:30  Design review                                                 Zoom\n"
              "  11:00 – 11:30  日本  [1m" +
                  std::string(50, 'x') +
                  "…\n"
                  "\nNext: Design review · 2h\nJoin: https://zoom.us/j/123?pwd=abc\n");
    const std::string coloured =
        agendaTable(json(), QTimeZone::utc(), {.colours = true, .width = 40}).toStdString();
    EXPECT_NE(coloured.find("\033[38;2;1;2;3m▍\033[0m"), std::string::npos);
    EXPECT_NE(coloured.find("日本  [1mxxxxx…\n"), std::string::npos) << coloured;
}

TEST(Rfc3339, readsTimesWithAnOffsetAlone)
{
    const std::pair<const char *, std::optional<double>> cases[] = {
        {"1970-01-01T00:00:00Z", 0},
        {"1970-01-01 01:00:00+01:00", 0},
        {"1969-12-31t23:59:59.5z", -0.5},
        {"2026-03-10T09:00:00-03:30", 1773145800},
        {"2016-12-31T23:59:60Z", 1483228800},
        {"2026-03-10T23:59:59", std::nullopt},
        {"2026-02-29T00:00:00Z", std::nullopt},
        {"2026-03-10T24:00:00Z", std::nullopt},
        {"2026-03-10T09:00:61Z", std::nullopt},
        {"2026-03-10T09:00:00+24:00", std::nullopt},
        {"2026-03-10T09:00:00Z\n", std::nullopt},
        {"2026-03-10T09:00:00.Z", std::nullopt},
    };
    for (const auto &[text, seconds] : cases) {
        const auto time = timestampFromRfc3339(text);
        EXPECT_EQ(time ? std::optional(secondsSinceEpoch(*time)) : std::nullopt, seconds) << text;
    }
}

TEST(Rfc3339, writesTheOffsetOfTheZoneAtThatTime)
{
    const std::tuple<const char *, double, const char *> cases[] = {
        {"Europe/Berlin", 1774745999, "2026-03-29T01:59:59+01:00"},
        {"Europe/Berlin", 1774746000, "2026-03-29T03:00:00+02:00"},
        {"America/St_Johns", 0, "1969-12-31T20:30:00-03:30"},
        {"Europe/Berlin", 253402300799, "9999-12-31T23:59:59+00:00"},
        {"Asia/Kathmandu", 1773136800.25, "2026-03-10T15:45:00.250+05:45"},
    };
    for (const auto &[zone, seconds, text] : cases)
        EXPECT_EQ(rfc3339(timestampFromSeconds(seconds), QTimeZone(zone)).toStdString(), text);
}

TEST(WindowSystem, isWaylandsWhereTheCompositorPlacesPanels)
{
    const struct
    {
        QByteArray wanted, panel, qt;
        bool hasX11, hasWayland, hasLayers;
        QByteArray expected;
    } rows[] = {
        {"", "", "", true, true, true, "wayland;xcb"},
        {"", "", "", true, true, false, "xcb;wayland"},
        {"", "", "", true, false, true, "xcb"},
        {"", "", "", false, true, false, "wayland"},
        {"", "", "", false, false, false, ""},
        {"", "", "wayland", true, true, false, "xcb;wayland"},
        {"", "", "xcb", true, true, true, "wayland;xcb"},
        {"", "", "offscreen", true, true, true, "offscreen"},
        {"", "x11", "", true, true, true, "xcb;wayland"},
        {"xcb", "", "offscreen", true, true, true, "xcb"},
    };

    for (const auto &row : rows) {
        const auto choice =
            chooseWindowSystem({row.wanted, row.panel, row.qt, row.hasX11, row.hasWayland,
                                [&] { return row.hasLayers ? QString() : QStringLiteral("none"); }});
        EXPECT_EQ(choice.platform, row.expected) << choice.reason.toStdString();
    }
}

} // namespace mivora
