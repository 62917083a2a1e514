#include "KeloPanel/backends/X11Connection.h"
#include "desktop/Desktop.h"
#include "desktop/RunningMivora.h"
#include "support/FakeKeyboard.h"

#include <QClipboard>
#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>
#include <optional>
#include <xcb/xproto.h>

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

std::optional<support::TrayDesktop> desktop;

/// Another program that has the shortcut.
class ShortcutThief final
{
public:
    ShortcutThief() : m_connection(xcb_connect(nullptr, nullptr))
    {
        const auto *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        constexpr xcb_keycode_t key = KEY_J + 8;
        xcb_grab_key(m_connection, 0, screen->root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, key,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    ~ShortcutThief() { xcb_disconnect(m_connection); }

    Q_DISABLE_COPY_MOVE(ShortcutThief)

private:
    xcb_connection_t *m_connection;
};

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

struct Window
{
    QRect frame;
    bool isManaged = false;
};

// The windows of a program that are on the screen.
std::vector<Window> visibleWindows(qint64 processId)
{
    const kelo::X11Connection x11;
    const auto managed = x11.values(x11.root(), "_NET_CLIENT_LIST");
    std::vector<Window> found;
    const auto look = [&](auto &&self, xcb_window_t parent) -> void {
        auto *tree = xcb_query_tree_reply(x11.get(), xcb_query_tree(x11.get(), parent), nullptr);
        if (!tree)
            return;
        for (int i = 0; i < xcb_query_tree_children_length(tree); ++i) {
            const xcb_window_t window = xcb_query_tree_children(tree)[i];
            const auto owner = x11.values(window, "_NET_WM_PID");
            auto *attributes = xcb_get_window_attributes_reply(
                x11.get(), xcb_get_window_attributes(x11.get(), window), nullptr);
            if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
                if (!owner.empty() && qint64(owner.front()) == processId) {
                    auto *box =
                        xcb_get_geometry_reply(x11.get(), xcb_get_geometry(x11.get(), window), nullptr);
                    found.push_back({QRect(box->x, box->y, box->width, box->height),
                                     std::find(managed.begin(), managed.end(), window) != managed.end()});
                    std::free(box);
                }
                self(self, window);
            }
            std::free(attributes);
        }
        std::free(tree);
    };
    look(look, x11.root());
    return found;
}

// A program that writes down what it is given to open; the desktop's default for the scheme.
void installHandler(const QString &scheme, const QByteArray &lastCommand = "true")
{
    const QString script = desktop->path(scheme + QStringLiteral("-handler"));
    desktop->write(scheme + QStringLiteral("-handler"),
                   "#!/bin/sh\nprintf '%s\\n' \"$@\" >>\"$HOME/opened\"\n" + lastCommand + "\n", true);
    desktop->write(QStringLiteral("applications/%1.desktop").arg(scheme),
                   "[Desktop Entry]\nType=Application\nName=Recorder\nExec=\"" + script.toLocal8Bit() +
                       "\" %u\nMimeType=x-scheme-handler/" + scheme.toLatin1() + ";\n");
    const QByteArray before = desktop->read(QStringLiteral("mimeapps.list"));
    desktop->write(QStringLiteral("mimeapps.list"), (before.isEmpty() ? "[Default Applications]\n" : before) +
                                                        "x-scheme-handler/" + scheme.toLatin1() + '=' +
                                                        scheme.toLatin1() + ".desktop\n");
}

QStringList opened()
{
    return QString::fromLocal8Bit(desktop->read(QStringLiteral("opened")))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool waitUntilOpened(const QStringList &links)
{
    return waitFor([&] { return opened() == links; }, 20s);
}

} // namespace

class MivoraInTray : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        if (support::TrayDesktop::isInstalled())
            desktop.emplace();
    }

    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        if (!desktop)
            GTEST_SKIP() << "openbox, xfce4-panel, xdotool or dbus-daemon is not installed";
        QDir(desktop->path(QStringLiteral("applications"))).removeRecursively();
        QFile::remove(desktop->path(QStringLiteral("mimeapps.list")));
        QFile::remove(desktop->path(QStringLiteral("opened")));
    }

    RunningMivora &start(const std::vector<support::CalendarEntry> &entries)
    {
        prepare(entries).start();
        EXPECT_TRUE(mivora->isShown());
        return *mivora;
    }

    RunningMivora &prepare(const std::vector<support::CalendarEntry> &entries)
    {
        RunningMivora &program = mivora.emplace(*desktop, entries);
        // No handler of the machine is the default here.
        program.setEnvironment(QStringLiteral("XDG_DATA_DIRS"), desktop->path(QStringLiteral("nothing")));
        return program;
    }

    std::optional<RunningMivora> mivora;
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
    EXPECT_TRUE(visibleWindows(program.processId()).empty()) << "it lives in the status area only";
}

TEST_F(MivoraInTray, opensTheLinkOfTheChosenEntry)
{
    installHandler(QStringLiteral("https"));
    RunningMivora &program = start({review, planning});
    ASSERT_TRUE(program.choose(QStringLiteral("Planning")));
    ASSERT_TRUE(waitUntilOpened({meetLink}));
    ASSERT_TRUE(program.choose(QStringLiteral("Design review")));
    EXPECT_TRUE(waitUntilOpened({meetLink, zoomLink})) << "without the app its link goes to the browser";
}

TEST_F(MivoraInTray, opensTheAppUnlessTheBrowserIsWanted)
{
    installHandler(QStringLiteral("https"));
    RunningMivora &program = start({review});
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

TEST_F(MivoraInTray, entryIsChosenWithThePointer)
{
    installHandler(QStringLiteral("https"));
    start({review, planning});
    // The icon stands at the panel's left end. The menu opens below it, the first meeting at its top.
    const auto point = [](int x, int y) {
        return QStringList{QStringLiteral("mousemove"), QString::number(x), QString::number(y)};
    };
    const QStringList click{QStringLiteral("click"), QStringLiteral("1")};
    ASSERT_TRUE(waitFor(
        [&] {
            // Away from the menu of the try before.
            desktop->act({QStringLiteral("key"), QStringLiteral("Escape")});
            desktop->act(point(16, 14) + click);
            waitFor(300ms);
            desktop->act(point(60, 44));
            desktop->act(point(64, 46) + click);
            return waitFor([] { return !opened().isEmpty(); }, 2s);
        },
        30s));
    EXPECT_EQ(opened(), QStringList{zoomLink});
}

TEST_F(MivoraInTray, copiesALinkThatNothingOpensAndSaysSo)
{
    RunningMivora &program = start({review});
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    ASSERT_TRUE(program.choose(QStringLiteral("Design review")));
    EXPECT_TRUE(waitFor([] { return QGuiApplication::clipboard()->text() == zoomLink; }));
    ASSERT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; })) << "the toast";
    EXPECT_FALSE(visibleWindows(program.processId()).front().isManaged);
    EXPECT_TRUE(waitFor([&] { return visibleWindows(program.processId()).empty(); }, 20s))
        << "goes by itself";
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
    const ShortcutThief itIsFree;
    keyboard.tap(shortcutKeys);
    waitFor(300ms);
    EXPECT_EQ(opened().size(), 1);
}

TEST_F(MivoraInTray, takenShortcutIsReportedAndCleared)
{
    const ShortcutThief thief;
    RunningMivora &program = start({review});
    program.set(QStringLiteral("joinHotKey"), shortcut);
    ASSERT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; }, 20s)) << "the alert";
    EXPECT_TRUE(visibleWindows(program.processId()).front().isManaged);
    const CommandResult stored =
        program.command({QStringLiteral("defaults"), QStringLiteral("read"), QStringLiteral("joinHotKey")});
    EXPECT_NE(stored.status, 0) << stored.output.toStdString();
    EXPECT_TRUE(program.menu().filter(QStringLiteral("Join Next")).isEmpty());
    desktop->act({QStringLiteral("key"), QStringLiteral("Return")});
    EXPECT_TRUE(waitFor([&] { return visibleWindows(program.processId()).empty(); })) << "Return closes it";
}

TEST_F(MivoraInTray, itemIsBackAfterEachRestartOfTheHost)
{
    RunningMivora &program = start({review});
    for (int round = 0; round < 5; ++round) {
        desktop->killPanel();
        ASSERT_TRUE(waitFor([] { return desktop->items().isEmpty(); }));
        desktop->startPanel();
        EXPECT_TRUE(program.isShown()) << round;
    }
}

TEST_F(MivoraInTray, hostMayComeLater)
{
    desktop->killPanel();
    RunningMivora &program = prepare({review});
    program.start();
    ASSERT_TRUE(waitFor([&] { return program.agenda().has_value(); }, 30s));
    desktop->startPanel();
    EXPECT_TRUE(program.isShown());
}

TEST_F(MivoraInTray, secondStartOpensTheSettingsAndEnds)
{
    RunningMivora &program = start({review});
    const CommandResult second = program.command({});
    EXPECT_EQ(second.status, 0) << second.errors.toStdString();
    EXPECT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; }, 20s));
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
    ASSERT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; }, 20s)) << "the panel";
    EXPECT_TRUE(panelRequest().isString());

    EXPECT_EQ(run("snooze").status, 0);
    EXPECT_TRUE(panelRequest().isNull()) << "the running program's own state is shown";
    const CommandResult nothingToSnooze = run("snooze");
    EXPECT_EQ(nothingToSnooze.status, 1);
    EXPECT_THAT(nothingToSnooze.errors.toStdString(), HasSubstr("no meeting has its panel shown now"));
    EXPECT_TRUE(waitFor([&] { return visibleWindows(program.processId()).empty(); }));

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
    ASSERT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; }, 20s)) << "first run";
    EXPECT_EQ(program.command({QStringLiteral("settings")}).status, 0);
    ASSERT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 2; }, 20s));
    EXPECT_EQ(program.command({QStringLiteral("quit")}).status, 0);
    ASSERT_TRUE(waitFor([&] { return !program.isRunning(); }));
    EXPECT_TRUE(program.endedNormally());
    EXPECT_EQ(program.exitStatus(), 0);
}

TEST_F(MivoraInTray, aFrozenProgramIsNotWaitedForForLong)
{
    RunningMivora &program = start({standUp});
    ::kill(static_cast<pid_t>(program.processId()), SIGSTOP);
    const QStringList nothing;
    for (const QStringList &arguments : {QStringList{QStringLiteral("join")}, nothing}) {
        QElapsedTimer timer;
        timer.start();
        const CommandResult result = program.command(arguments);
        EXPECT_LT(timer.elapsed(), 20'000);
        EXPECT_EQ(result.status, 1);
        // Qt's bus thread may have a word of its own when the process ends beside a call without an answer.
        EXPECT_EQ(result.errors.count("mivora: "), 1) << result.errors.toStdString();
        EXPECT_THAT(result.errors.toStdString(), HasSubstr("not answer"));
    }
    ::kill(static_cast<pid_t>(program.processId()), SIGCONT);
}

TEST_F(MivoraInTray, dismissedPanelStaysAway)
{
    RunningMivora &program = start({standUp});
    ASSERT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; }, 20s));
    EXPECT_EQ(program.command({QStringLiteral("dismiss")}).status, 0);
    EXPECT_TRUE(waitFor([&] { return visibleWindows(program.processId()).empty(); }));
    EXPECT_TRUE((*program.agenda())[QLatin1String("panelRequest")].isNull());
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
    EXPECT_TRUE(waitFor([&] { return visibleWindows(program.processId()).size() == 1; }, 20s)) << "the panel";
    EXPECT_LT(program.answerTime(), soon);
}

} // namespace mivora
