#include "App/AgendaTable.h"

#include "App/AgendaJson.h"
#include "App/WorkspaceInstalledApps.h"
#include "FakeSurroundings.h"
#include "Scheduling/SchedulerTest.h"

#include <QJsonDocument>

namespace mivora {

namespace {

class Agenda : public SchedulerTest
{
public:
    QJsonObject json()
    {
        return agendaJson({.scheduler = scheduler,
                           .source = source,
                           .prefs = prefs,
                           .installed = installed,
                           .now = clock.time,
                           .zone = QTimeZone::utc(),
                           .joinHotKey = QStringLiteral("⌘J")});
    }

    FakeWorkspace workspace;
    WorkspaceInstalledApps installed{workspace};
};

EventSnapshot designReview()
{
    EventSnapshot snapshot = makeSnapshot("Design review", at("2026-03-10T10:00:00Z"));
    snapshot.calendarColor = Color{1, 2, 3};
    snapshot.participation = Participation::tentative;
    snapshot.attendeeCount = 3;
    snapshot.notes = "https://zoom.us/j/123?pwd=abc";
    return snapshot;
}

} // namespace

TEST_F(Agenda, isOneStableObject)
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
}

TEST_F(Agenda, aTableIsPlainOrColoured)
{
    const Meeting review = Meeting::fromSnapshot(designReview());
    // The same meeting in a second calendar: one of the two is the next.
    source.events = {review, inCalendar(review, "other"),
                     makeMeeting("日本\n\033[1m" + std::string(400, 'x'), at("2026-03-10T11:00:00Z"))};
    refreshAt("2026-03-10T08:00:00Z");
    const std::string plain = agendaTable(json(), QTimeZone::utc(), {});
    EXPECT_EQ(plain.substr(plain.find('\n') + 1),
              "→ 10:00 – 10:30  Design review                                                 Zoom\n"
              "  10:00 – 10:30  Design review                                                 Zoom\n"
              "  11:00 – 11:30  日本  [1m" +
                  std::string(50, 'x') +
                  "…\n"
                  "\nNext: Design review · 2h\nJoin: https://zoom.us/j/123?pwd=abc\n");
    const std::string coloured = agendaTable(json(), QTimeZone::utc(), {.colours = true, .width = 40});
    EXPECT_NE(coloured.find("\033[38;2;1;2;3m▍\033[0m"), std::string::npos);
    EXPECT_EQ(coloured.find(std::string(20, 'x')), std::string::npos);
}

} // namespace mivora
