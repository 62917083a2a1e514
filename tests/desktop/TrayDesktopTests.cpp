#include "desktop/MivoraOnDesktop.h"
#include "support/FakeKeyboard.h"
#include "support/OtherClient.h"

#include <QClipboard>
#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <csignal>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

// The real program on a desktop with a real status area, used as its user and its host use it.
namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::CommandResult;
using support::RunningMivora;
using support::waitFor;
using testing::Contains;
using testing::HasSubstr;

const QString zoomLink = QStringLiteral("https://zoom.us/j/123456789?pwd=abc");
const QString zoomAppLink = QStringLiteral("zoommtg://zoom.us/join?confno=123456789&pwd=abc");
const QString meetLink = QStringLiteral("https://meet.google.com/abc-defg-hij");
const support::CalendarEntry review{QStringLiteral("Design review"), 600s, zoomLink};
const support::CalendarEntry planning{QStringLiteral("Planning"), 1200s, meetLink};
// Near enough for its panel to be shown at once.
const support::CalendarEntry standUp{QStringLiteral("Stand-up"), 40s, zoomLink};

// Control and Option with J.
const QString shortcut = QStringLiteral(R"({"keyCode":38,"modifiers":6144})");
const std::initializer_list<int> shortcutKeys{KEY_LEFTCTRL, KEY_LEFTALT, KEY_J};
constexpr int shortcutModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

/// A service that takes every call and never answers.
class StuckPeer final : public QDBusVirtualObject
{
public:
    StuckPeer(const QDBusConnection &bus, const char *name) : m_bus(bus)
    {
        m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        m_bus.registerService(QLatin1String(name));
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &, const QDBusConnection &) override { return true; }

private:
    QDBusConnection m_bus;
};

} // namespace

class MivoraInTray : public support::MivoraOnDesktop
{
protected:
    void SetUp() override
    {
        MivoraOnDesktop::SetUp();
        if (!desktop)
            return;
        QDir(desktop->path(QStringLiteral("applications"))).removeRecursively();
        QFile::remove(desktop->path(QStringLiteral("mimeapps.list")));
        QFile::remove(desktop->path(QStringLiteral("opened")));
    }

    // A program that writes down what it is given to open; the desktop's default for the scheme.
    static void installHandler(const QString &scheme, const QByteArray &lastCommand = "true")
    {
        const QString script = desktop->path(scheme + QStringLiteral("-handler"));
        desktop->write(scheme + QStringLiteral("-handler"),
                       "#!/bin/sh\nprintf '%s\\n' \"$@\" >>\"$HOME/opened\"\n" + lastCommand + "\n", true);
        desktop->write(QStringLiteral("applications/%1.desktop").arg(scheme),
                       "[Desktop Entry]\nType=Application\nName=Recorder\nExec=\"" + script.toLocal8Bit() +
                           "\" %u\nMimeType=x-scheme-handler/" + scheme.toLatin1() + ";\n");
        const QByteArray before = desktop->read(QStringLiteral("mimeapps.list"));
        desktop->write(QStringLiteral("mimeapps.list"),
                       (before.isEmpty() ? "[Default Applications]\n" : before) + "x-scheme-handler/" +
                           scheme.toLatin1() + '=' + scheme.toLatin1() + ".desktop\n");
    }

    static QStringList opened()
    {
        return QString::fromLocal8Bit(desktop->read(QStringLiteral("opened")))
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    static bool waitUntilOpened(const QStringList &links)
    {
        return waitFor([&] { return opened() == links; }, 20s);
    }

    /// Whether so many windows of the program are on the screen, soon.
    bool showsWindows(std::size_t count)
    {
        return waitFor([&] { return mivora->windows().size() == count; }, 20s);
    }
};

TEST_F(MivoraInTray, hostReadsTitleAndMenu)
{
    RunningMivora &program = start({review, planning});
    EXPECT_EQ(program.property(QStringLiteral("Title")).toString(), QStringLiteral("Design review · 10m"));
    const QStringList menu = program.menu();
    ASSERT_GE(menu.size(), 6);
    EXPECT_TRUE(menu[0].endsWith(QStringLiteral("  Design review  · Zoom"))) << menu[0].toStdString();
    EXPECT_TRUE(menu[1].endsWith(QStringLiteral("  Planning  · Google Meet"))) << menu[1].toStdString();
    EXPECT_EQ(menu[2], QStringLiteral("-"));
    EXPECT_EQ(menu.last(), QStringLiteral("Quit Mivora"));
    EXPECT_TRUE(program.windows().empty()) << "it lives in the status area only";
}

TEST_F(MivoraInTray, opensTheAppUnlessTheBrowserIsWanted)
{
    installHandler(QStringLiteral("https"));
    RunningMivora &program = start({review, planning});
    ASSERT_TRUE(program.choose(QStringLiteral("Planning")));
    ASSERT_TRUE(waitUntilOpened({meetLink}));
    ASSERT_TRUE(program.choose(QStringLiteral("Design review")));
    EXPECT_TRUE(waitUntilOpened({meetLink, zoomLink})) << "without the app its link goes to the browser";
    installHandler(QStringLiteral("zoommtg"));
    ASSERT_TRUE(waitFor(
        [&] {
            program.choose(QStringLiteral("Design review"));
            return opened().contains(zoomAppLink);
        },
        20s))
        << "an app installed meanwhile is found";
    program.set(QStringLiteral("browserServices"), QStringLiteral(R"(["zoom"])"));
    const auto wantsBrowser = [&] {
        const auto agenda = program.agenda();
        const auto today = agenda ? (*agenda)[QLatin1String("today")].toArray() : QJsonArray();
        return !today.isEmpty() && today[0][QLatin1String("linkToOpen")].toString() == zoomLink;
    };
    ASSERT_TRUE(waitFor(wantsBrowser)) << "another process's change is noticed";
    QFile::remove(desktop->path(QStringLiteral("opened")));
    program.choose(QStringLiteral("Design review"));
    EXPECT_TRUE(waitUntilOpened({zoomLink}));
}

TEST_F(MivoraInTray, copiesALinkThatNothingOpensAndSaysSo)
{
    RunningMivora &program = start({review});
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    ASSERT_TRUE(program.choose(QStringLiteral("Design review")));
    EXPECT_TRUE(waitFor([] { return QGuiApplication::clipboard()->text() == zoomLink; }));
    ASSERT_TRUE(showsWindows(1)) << "the toast";
    EXPECT_FALSE(program.windows().front().isManaged);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), zoomLink) << "stays on the clipboard";
}

TEST_F(MivoraInTray, shortcutJoinsTheNextMeeting)
{
    installHandler(QStringLiteral("https"));
    RunningMivora &program = start({review});
    program.set(QStringLiteral("joinHotKey"), shortcut);
    ASSERT_TRUE(waitFor([&] { return program.menu().contains(QStringLiteral("Join Next Meeting   ⌃⌥J")); }));
    support::FakeKeyboard keyboard;
    keyboard.tap(shortcutKeys);
    EXPECT_TRUE(waitUntilOpened({zoomLink}));
    program.command({QStringLiteral("defaults"), QStringLiteral("delete"), QStringLiteral("joinHotKey")});
    ASSERT_TRUE(waitFor([&] { return program.menu().filter(QStringLiteral("Join Next")).isEmpty(); }));
    support::OtherClient other;
    EXPECT_TRUE(other.grab(KEY_J + 8, shortcutModifiers)) << "it is free";
    keyboard.tap(shortcutKeys);
    EXPECT_TRUE(waitFor([&] { return other.presses() == 1; }));
    EXPECT_EQ(opened().size(), 1);
}

TEST_F(MivoraInTray, takenShortcutIsReportedAndCleared)
{
    support::OtherClient thief;
    ASSERT_TRUE(thief.grab(KEY_J + 8, shortcutModifiers));
    RunningMivora &program = start({review});
    program.set(QStringLiteral("joinHotKey"), shortcut);
    ASSERT_TRUE(showsWindows(1)) << "the alert";
    EXPECT_TRUE(program.windows().front().isManaged);
    const CommandResult stored =
        program.command({QStringLiteral("defaults"), QStringLiteral("read"), QStringLiteral("joinHotKey")});
    EXPECT_NE(stored.status, 0) << stored.output.toStdString();
    EXPECT_TRUE(program.menu().filter(QStringLiteral("Join Next")).isEmpty());
    desktop->act({QStringLiteral("key"), QStringLiteral("Return")});
    EXPECT_TRUE(showsWindows(0)) << "Return closes it";
}

TEST_F(MivoraInTray, hostMayComeLaterAndAgain)
{
    desktop->killPanel();
    RunningMivora &program = prepare({review});
    program.start();
    ASSERT_TRUE(waitFor([&] { return program.agenda().has_value(); }, 30s));
    desktop->startPanel();
    EXPECT_TRUE(program.isShown());

    desktop->killPanel();
    ASSERT_TRUE(waitFor([] { return desktop->items().isEmpty(); }));
    desktop->startPanel();
    EXPECT_TRUE(program.isShown()) << "started again";
}

TEST_F(MivoraInTray, secondStartOpensTheSettingsAndEnds)
{
    RunningMivora &program = start({review});
    const CommandResult second = program.command({});
    EXPECT_EQ(second.status, 0) << second.errors.toStdString();
    EXPECT_TRUE(showsWindows(1));
    EXPECT_EQ(desktop->items().size(), 1);
}

TEST_F(MivoraInTray, commandsReachTheRunningProgram)
{
    installHandler(QStringLiteral("https"));
    RunningMivora &program = start({standUp, planning});
    const auto run = [&](const char *name) { return program.command({QLatin1String(name)}); };
    const auto panelRequest = [&] {
        const QByteArray output =
            program.command({QStringLiteral("agenda"), QStringLiteral("--json")}).output;
        return QJsonDocument::fromJson(output)[QLatin1String("panelRequest")];
    };
    ASSERT_TRUE(showsWindows(1)) << "the panel";
    EXPECT_TRUE(panelRequest().isString());

    EXPECT_EQ(run("snooze").status, 0);
    EXPECT_TRUE(panelRequest().isNull()) << "the running program's own state is shown";
    const CommandResult nothingToSnooze = run("snooze");
    EXPECT_EQ(nothingToSnooze.status, 1);
    EXPECT_THAT(nothingToSnooze.errors.toStdString(), HasSubstr("no meeting has its panel shown now"));
    EXPECT_TRUE(showsWindows(0));

    EXPECT_EQ(run("copy").status, 0);
    EXPECT_TRUE(waitFor([] { return QGuiApplication::clipboard()->text() == zoomLink; }));
    EXPECT_EQ(run("join").status, 0);
    EXPECT_TRUE(waitUntilOpened({zoomLink}));

    EXPECT_EQ(run("quit").status, 0);
    EXPECT_TRUE(waitFor([&] { return !program.isRunning(); }));
    EXPECT_EQ(program.exitStatus(), 0);
    for (const char *name : {"join", "snooze", "dismiss", "copy", "settings", "quit"}) {
        const CommandResult result = run(name);
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_EQ(result.errors.count('\n'), 1) << name << ": " << result.errors.toStdString();
    }
}

TEST_F(MivoraInTray, endsInPeaceWithItsWindowsOpen)
{
    RunningMivora &program = prepare({review});
    program.command(
        {QStringLiteral("defaults"), QStringLiteral("delete"), QStringLiteral("hasCompletedOnboarding")});
    program.start();
    ASSERT_TRUE(showsWindows(1)) << "first run";
    EXPECT_EQ(program.command({QStringLiteral("settings")}).status, 0);
    ASSERT_TRUE(showsWindows(2));
    EXPECT_EQ(program.command({QStringLiteral("quit")}).status, 0);
    ASSERT_TRUE(waitFor([&] { return !program.isRunning(); }));
    EXPECT_TRUE(program.endedNormally());
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST_F(MivoraInTray, aFrozenProgramIsNotWaitedForForLong)
{
    RunningMivora &program = start({standUp});
    ::kill(static_cast<pid_t>(program.processId()), SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    const auto results = program.commands({{QStringLiteral("join")}, {}});
    EXPECT_LT(timer.elapsed(), 20'000);
    for (const CommandResult &result : results) {
        EXPECT_EQ(result.status, 1);
        // Qt's bus thread may have a word of its own when the process ends beside a call without an answer.
        EXPECT_EQ(result.errors.count("mivora: "), 1) << result.errors.toStdString();
        EXPECT_THAT(result.errors.toStdString(), HasSubstr("not answer"));
    }
    ::kill(static_cast<pid_t>(program.processId()), SIGCONT);
}

// Whatever hangs around the program, it goes on answering.
class MivoraAmongHangingPrograms : public MivoraInTray
{
protected:
    static constexpr auto soon = 200ms;
};

TEST_F(MivoraAmongHangingPrograms, frozenHostDelaysNothing)
{
    RunningMivora &program = start({review});
    desktop->freezePanel();
    for (int width = 5; width < 12; ++width)
        program.set(QStringLiteral("titleWidth"), QString::number(width));
    EXPECT_TRUE(waitFor([&] {
        return program.property(QStringLiteral("Title")).toString().startsWith(QStringLiteral("Design rev…"));
    }));
    EXPECT_LT(program.answerTime(), soon);

    RunningMivora &another = prepare({review});
    another.start();
    EXPECT_TRUE(waitFor([&] { return another.agenda().has_value(); }, 30s)) << "it starts all the same";
    EXPECT_LT(another.answerTime(), soon);
    desktop->thawPanel();
    EXPECT_TRUE(another.isShown());
}

TEST_F(MivoraAmongHangingPrograms, hungOpenerDelaysNothing)
{
    installHandler(QStringLiteral("https"), "echo $$ >\"$HOME/opener\"; exec sleep 60");
    RunningMivora &program = start({review});
    ASSERT_TRUE(program.choose(QStringLiteral("Design review")));
    ASSERT_TRUE(waitUntilOpened({zoomLink}));
    EXPECT_LT(program.answerTime(), soon);
    ASSERT_TRUE(waitFor([] { return desktop->read(QStringLiteral("opener")).endsWith('\n'); }));
    ::kill(desktop->read(QStringLiteral("opener")).trimmed().toInt(), SIGKILL);
}

TEST_F(MivoraAmongHangingPrograms, stuckServicesDelayNothing)
{
    const StuckPeer portal(desktop->connection(), "org.freedesktop.portal.Desktop");
    const StuckPeer notifications(desktop->connection(), "org.freedesktop.Notifications");
    QElapsedTimer timer;
    timer.start();
    RunningMivora &program = start({standUp});
    EXPECT_LT(timer.elapsed(), 20'000) << "longer than any call waits";
    EXPECT_LT(program.answerTime(), soon);
    EXPECT_TRUE(showsWindows(1)) << "the panel";
    EXPECT_LT(program.answerTime(), soon);
}

} // namespace mivora
