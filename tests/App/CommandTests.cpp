#include "App/ApplicationService.h"
#include "App/RunningInstance.h"
#include "App/commands/AgendaFollower.h"
#include "App/commands/Commands.h"
#include "App/commands/Rfc3339.h"
#include "support/PrivateBus.h"

#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTemporaryDir>
#include <QTest>
#include <future>
#include <gmock/gmock.h>

// Commands as a person gives them, on the sample calendars, in a home of the test's own.
namespace mivora {

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

struct Outcome
{
    int status = 0;
    std::string printed;
    std::string complaint;
};

/// What a line, with a blank between arguments, does.
Outcome run(const std::string &line)
{
    const QByteArrayList words = QByteArray::fromStdString("mivora " + line).split(' ');
    std::vector<const char *> arguments(words.size());
    std::ranges::transform(words, arguments.begin(), &QByteArray::constData);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = runCommand(parseCommandLine(int(arguments.size()), arguments.data()));
    return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

class Commands : public testing::Test
{
protected:
    Commands()
    {
        qputenv("HOME", m_home.path().toLocal8Bit());
        for (const char *folder : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "MIVORA_CALENDARS"})
            qunsetenv(folder);
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        qputenv("MIVORA_EDS", "none");
        qputenv("TZ", "Europe/Berlin");
    }

    ~Commands() override { qunsetenv("TZ"); }

    /// At noon of March 10, in UTC.
    void writeEvent(const char *title)
    {
        QFile file(m_home.filePath(QStringLiteral("a.ics")));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QByteArray("BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:a\nDTSTART:20260310T120000Z\nSUMMARY:") +
                   title + "\nDURATION:PT1H\nEND:VEVENT\nEND:VCALENDAR\n");
    }

    std::string folder() const { return m_home.path().toStdString(); }

    QTemporaryDir m_home;
};

} // namespace

TEST_F(Commands, printTheAgendaOfAnyTime)
{
    const std::pair<const char *, const char *> rows[] = {
        {"2026-03-13T08:00:00+01:00", "  No more meetings today\n"},
        {"2026-03-29T00:30:00+01:00", "Next: Sunday on-call handover · 1h\n"}, // clocks go forward
        {"2026-03-29T03:30:00+02:00", "→ 01:30 – 04:30  Sunday on-call handover  Google Meet\n"
                                      "  10:00 – 10:30  Family call              FaceTime\n"},
    };
    for (const auto &[time, lines] : rows) {
        const Outcome outcome = run("agenda --calendars " SAMPLE_CALENDARS " --at " + std::string(time));
        EXPECT_EQ(outcome.status, exitDone) << outcome.complaint;
        EXPECT_THAT(outcome.printed, HasSubstr(lines)) << time;
    }
}

TEST_F(Commands, keepATitleFromActingOnTheTerminal)
{
    writeEvent("\u009b2J \u202e \u2028Ü");
    EXPECT_THAT(run("agenda --json --at 2026-03-10T11:00:00Z --calendars " + folder()).printed,
                HasSubstr(R"("title": "\u009b2J \u202e \u2028Ü")"));
}

TEST_F(Commands, leaveOutWhatTheSettingsSayAndTellWhy)
{
    const std::string next = "\nDURATION:PT1H\nEND:VEVENT\nBEGIN:VEVENT\nDTSTART:20260310T120000Z\nSUMMARY:";
    const std::string me = ":mailto:Me@x.test", other = ":mailto:other@x.test", mine = "\nORGANIZER" + me,
                      theirs = "\nORGANIZER" + other;
    const std::tuple<const char *, std::string, const char *> events[] = {
        {"Team lunch", mine + "\nATTENDEE" + other, " +left out: its title"},
        {"Room", mine + "\nATTENDEE" + me + "\nATTENDEE;CUTYPE=ROOM" + other, " +left out: nobody else"},
        {"Published", theirs, " +left out: nobody else"},
        {"New", "\nATTENDEE" + me, " +left out: not accepted"},
        {"Maybe", theirs + "\nATTENDEE;PARTSTAT=TENTATIVE" + me, " +left out: not accepted"},
        {"Yes", theirs + "\nATTENDEE;PARTSTAT=ACCEPTED" + me, ""},
        {"Own", mine + "\nATTENDEE" + me + "\nATTENDEE" + other, ""},
        {"Group", theirs + "\nATTENDEE" + other, ""},
    };
    std::string text = "Other";
    for (const auto &[title, lines, note] : events)
        text += next + title + lines;
    writeEvent(text.c_str());
    const std::string agenda = "agenda --calendars " + folder() + " --at ", noon = "2026-03-10T12:00:00Z";
    for (const std::string key : {"addresses [\"me@x.test\"]", "ignoredTitles [\"*LUNCH\"]",
                                  "ignoreUnanswered true", "ignoreWithoutOthers true"})
        run("defaults write " + key);
    for (const std::string &time : {noon, std::string("2026-03-09T20:00:00Z")}) {
        const std::string counted = run(agenda + time).printed, all = run(agenda + time + " --all").printed;
        for (const auto &[title, lines, note] : events) {
            EXPECT_THAT(all, ContainsRegex(title + std::string(note) + "\n"));
            EXPECT_EQ(counted.find(title) == std::string::npos, *note != 0) << title;
        }
    }
    EXPECT_THAT(run(agenda + noon + " --all --json").printed, HasSubstr(R"("leftOut": "unanswered",)"));
}

TEST_F(Commands, areDoneOnceHoweverManyCalendarsChange)
{
    CalendarSession session({.folders = {folder()}, .at = std::nullopt});
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.source().isLoaded(); }));
    int times = 0;
    session.whenLoaded([&](bool) { ++times; });
    Q_EMIT session.source().changed();
    Q_EMIT session.source().changed();
    EXPECT_TRUE(QTest::qWaitFor([&] { return times > 0; }) && times == 1) << times;
}

TEST_F(Commands, followTheAgendaThroughChangesOfFilesAndTime)
{
    const SessionOptions options{
        .folders = {folder()}, .at = timestampFromRfc3339("2026-03-10T11:58:58.5Z"), .timePasses = true};
    std::vector<std::string> titles;
    AgendaFollower follower(options, AgendaFollower::Topic::agenda, [&](const QJsonObject &agenda) {
        titles.push_back(
            agenda[QLatin1String("statusItem")][QLatin1String("title")].toString().toStdString());
    });
    const auto isTold = [&](std::size_t count) {
        return QTest::qWaitFor([&] { return titles.size() >= count; });
    };
    follower.start();
    ASSERT_TRUE(isTold(1));
    writeEvent("Standup");
    // The panel comes, and "2m" becomes "now", within two seconds.
    ASSERT_TRUE(isTold(3));
    EXPECT_THAT(titles, testing::ElementsAre("", " Standup · 2m", " Standup · now"));
}

TEST_F(Commands, followEventsOverAProgramThatIsStartedAnew)
{
    support::PrivateBus bus;
    QDBusConnection program = bus.connection();
    QString told;
    const auto print = [&](const QJsonObject &of) { told += of[QLatin1String("event")].toString() + u' '; };
    AgendaFollower follower({}, AgendaFollower::Topic::meetings, print, bus.connection());
    follower.start();
    const QLatin1String name(applicationBusName), path(applicationObjectPath), interface(agendaInterface);
    for (const QByteArray events : {"MeetingJoined MeetingStarted", "MeetingDue MeetingStarted"}) {
        program.registerService(name);
        for (const QByteArray &event : events.split(' '))
            program.send(QDBusMessage::createSignal(path, interface, QLatin1String(event))
                         << QStringLiteral(R"({"id":"a"})"));
        program.unregisterService(name);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == u"MeetingJoined MeetingStarted MeetingEnded "; }));
}

TEST_F(Commands, printLinksSettingsAndAccessOrNameWhatWasExpected)
{
    // The line, the status, what is printed, and how the complaint reads.
    const std::tuple<const char *, int, const char *, const char *> rows[] = {
        {"detect --notes x(https://zoom.us/j/1).", exitDone,
         "Zoom\nhttps://zoom.us/j/1\nzoommtg://zoom.us/join?confno=1\n", ""},
        {"detect --json --url none --location https://a.b", exitDone,
         "{\"nativeURL\":null,\"service\":\"other\",\"webURL\":\"https://a.b\"}\n", ""},
        {"detect --notes none", exitCouldNot, "", "no join link found"},
        {"detect --json", exitDone, "null\n", ""},
        {"defaults write leadMinutes 5", exitDone, "", ""},
        {"defaults read leadMinutes", exitDone, "5\n", ""},
        {"defaults write leadMinutes soon", exitBadArguments, "", "expected one of 0, 1, 2, 5, got"},
        {"defaults write leadMinutes 3", exitDone, "", "\"3\" is kept, but read as 1"},
        {"defaults write titleWidth x", exitBadArguments, "", "expected a whole number"},
        {"defaults write showTitle no", exitBadArguments, "", "expected true or false"},
        {"defaults write showTitle false", exitDone, "", ""},
        {"defaults write disabledCalendarIDs [\"a\"]", exitDone, "", ""},
        {"defaults write disabledCalendarIDs [1]", exitBadArguments, "", "JSON array of strings"},
        {"defaults read disabledCalendarIDs", exitDone, "[\"a\"]\n", ""},
        {"defaults delete disabledCalendarIDs", exitDone, "", ""},
        {"defaults list", exitDone,
         "showTitle false\ntitleWidth 24\nhideTitleWhileInhibited false\nleadMinutes 3\npanelCorner "
         "topRight\nremindWithoutLink false\ndisabledCalendarIDs []\nignoredTitles []\nignoreUnanswered "
         "false\nignoreWithoutOthers false\nbrowserServices []\nhasCompletedOnboarding false\naddresses []\n",
         ""},
        {"defaults read joinHotKey", exitCouldNot, "", "joinHotKey is not set"},
        {"defaults read bogus", exitBadArguments, "", "expected one of showTitle"},
        {"agenda", exitCouldNot, "", "`mivora access allow`"},
        {"access allow", exitDone, "", ""},
        {"access status", exitDone, "denied\n", ""},
        {"agenda", exitCouldNot, "", "no calendars can be read"},
        {"access reset", exitDone, "", ""},
        {"access", exitDone, "notDetermined\n", ""},
        {"agenda --calendars /none", exitCouldNot, "", "there is no folder \"/none\""},
        {"agenda --calendars /etc/passwd", exitCouldNot, "", "\"/etc/passwd\" is no folder"},
        {"join", exitCouldNot, "", "no session bus"},
        {"bogus", exitBadArguments, "", "bogus.*agenda"},
        {"agenda --bogus", exitBadArguments, "", "--bogus.*--follow"},
        {"agenda --all --follow", exitBadArguments, "", "--follow excludes --all"},
        {"agenda --at noon", exitBadArguments, "", "RFC 3339.*noon"},
        {"agenda --calendars", exitBadArguments, "", "--calendars.*DIR"},
        {"defaults", exitBadArguments, "", "defaults.*list, read, write, delete"},
        {"defaults read", exitBadArguments, "", "key.*required"},
        {"access maybe", exitBadArguments, "", "maybe.*status, allow, reset"},
        {"settings colours", exitBadArguments, "", "colours.*general,calendars"},
        {"title", exitBadArguments, "", "action.*required"},
        {"title blur", exitBadArguments, "", "blur.*hide,show,toggle"},
        {"a\nb\033c", exitBadArguments, "", "a b c.*agenda"},
    };
    for (const auto &[line, status, printed, complaint] : rows) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.status, status) << line;
        EXPECT_EQ(outcome.printed, printed) << line;
        EXPECT_THAT(outcome.complaint,
                    ContainsRegex(*complaint ? "^mivora: .*" + std::string(complaint) : "^$"))
            << line;
        EXPECT_EQ(std::ranges::count(outcome.complaint, '\n'), *complaint ? 1 : 0) << outcome.complaint;
    }
    EXPECT_THAT(run("--help").printed, HasSubstr("agenda"));
}

using namespace std::chrono_literals;

TEST(StartAtLogin, isLeftToTheManagerThatKnowsTheDisplayOfThisSession)
{
    struct Manager final : QDBusVirtualObject
    {
        QString introspect(const QString &) const override { return {}; }

        bool handleMessage(const QDBusMessage &call, const QDBusConnection &bus) override
        {
            const QDBusVariant environment(QStringList(QStringLiteral("DISPLAY=:7")));
            return bus.send(call.createReply(QVariant::fromValue(environment)));
        }
    } manager;

    support::PrivateBus bus;
    QDBusConnection theirs = bus.connection();
    theirs.registerVirtualObject(QStringLiteral("/org/freedesktop/systemd1"), &manager);
    theirs.registerService(QStringLiteral("org.freedesktop.systemd1"));
    for (const QByteArray display : {":70", ":7"}) {
        qputenv("DISPLAY", display);
        auto answer = std::async(std::launch::async, managerKnowsDisplay, bus.connection());
        const auto isThere = [&] { return answer.wait_for(0s) == std::future_status::ready; };
        EXPECT_TRUE(QTest::qWaitFor(isThere) && answer.get() == (display == ":7"));
    }
}

} // namespace mivora
