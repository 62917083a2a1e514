#include "desktop/PanelUnderTest.h"
#include "support/FakeNotifications.h"
#include "support/MeetingFactory.h"
#include "support/PrivateBus.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>
#include <optional>

namespace mivora {

namespace {

using testing::ElementsAre;

const Timestamp now = at("2026-03-10T08:55:00Z");
const Meeting review = withLink(makeMeeting("Design review", now + Seconds(300)));
const Meeting lunch = makeMeeting("Lunch", now + Seconds(300));

void press(QWindow &window, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, modifiers, quint32(key + 8), 0, 0);
    QCoreApplication::sendEvent(&window, &event);
}

void collect(QAccessibleInterface *item, std::vector<std::string> &names)
{
    if (!item || item->state().invisible)
        return;
    const QString name = item->text(QAccessible::Name);
    if (item->role() == QAccessible::Button)
        names.push_back("button " + name.toStdString());
    else if (item->role() == QAccessible::AlertMessage)
        names.push_back("alert " + name.toStdString());
    for (int i = 0; i < item->childCount(); ++i)
        collect(item->child(i), names);
}

} // namespace

class JoinPanelControllerTest : public testing::Test, public PanelUnderTest
{
};

TEST_F(JoinPanelControllerTest, keysActByTheirPlaceOnTheKeyboard)
{
    panel.show(review, now);
    press(*window(), KEY_S);
    press(*window(), KEY_S, Qt::MetaModifier | Qt::ShiftModifier);
    press(*window(), KEY_ENTER);
    press(*window(), KEY_KPENTER);
    press(*window(), KEY_ESC);
    press(*window(), KEY_J);
    EXPECT_THAT(actions, ElementsAre("snooze Design review", "snooze Design review", "join Design review",
                                     "join Design review", "dismiss Design review"));
}

TEST_F(JoinPanelControllerTest, returnJoinsEvenWithoutALink)
{
    panel.show(lunch, now);
    press(*window(), KEY_ENTER);
    EXPECT_THAT(actions, ElementsAre("join Lunch"));
}

TEST_F(JoinPanelControllerTest, actionsConcernTheMeetingOnShowNow)
{
    panel.show(review, now);
    panel.show(lunch, now);
    press(*window(), KEY_ESC);
    panel.refresh(review, now);
    press(*window(), KEY_ESC);
    panel.refresh(std::nullopt, now + Seconds(60));
    press(*window(), KEY_ESC);
    EXPECT_THAT(actions, ElementsAre("dismiss Lunch", "dismiss Design review", "dismiss Design review"));
    EXPECT_EQ(panel.model().timeText(), QLatin1String("Starts in 4m"));
}

TEST_F(JoinPanelControllerTest, aHiddenPanelIsNotRefreshed)
{
    panel.show(review, now);
    panel.hide();
    panel.refresh(lunch, now + Seconds(60));
    EXPECT_EQ(panel.model().meeting(), review);
    EXPECT_EQ(panel.model().now(), now);
}

TEST_F(JoinPanelControllerTest, aNewCornerCountsFromTheNextShowingOn)
{
    panel.show(review, now);
    const QPoint before = window()->position();
    prefs.setPanelCorner(PanelCorner::bottomLeft);
    panel.show(lunch, now);
    EXPECT_EQ(window()->position(), before);
    panel.hide();
    panel.show(lunch, now);
    EXPECT_LT(window()->x(), before.x());
    EXPECT_GT(window()->y(), before.y());
}

TEST_F(JoinPanelControllerTest, saysToScreenReadersWhatItShows)
{
    QAccessible::setActive(true);
    panel.show(review, now);
    std::vector<std::string> names;
    collect(QAccessible::queryAccessibleInterface(window()), names);
    EXPECT_THAT(names, ElementsAre("alert Design review, Starts in 5m", "button Join", "button Snooze 1 min",
                                   "button Dismiss"));
    panel.show(lunch, now);
    names.clear();
    collect(QAccessible::queryAccessibleInterface(window()), names);
    EXPECT_THAT(names, ElementsAre("alert Lunch, Starts in 5m", "button Snooze 1 min", "button Dismiss"));
}

TEST_F(JoinPanelControllerTest, isANotificationWhereWindowsCanNotBePlaced)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    qputenv("MIVORA_PANEL", "notification");
    support::PrivateBus bus;
    kelo::FakeNotifications desktop(bus.connection());
    std::vector<std::string> done;
    JoinPanelController notified(
        prefs, views,
        {.onJoin = [&](const Meeting &meeting) { done.push_back("join " + meeting.title); },
         .onSnooze = [&](const Meeting &meeting) { done.push_back("snooze " + meeting.title); },
         .onDismiss = [&](const Meeting &meeting) { done.push_back("dismiss " + meeting.title); }},
        now, bus.connection());
    notified.show(review, now);
    EXPECT_TRUE(notified.isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.calls.size() == 1; }));
    EXPECT_EQ(desktop.calls[0], "notify 0 Design review|Starts in 5m · Zoom|"
                                "default,Join,join,Join,snooze,Snooze 1 min,dismiss,Dismiss|0");
    QTest::qWait(50);
    EXPECT_EQ(desktop.calls.size(), 1U) << "presented once";
    for (const char *action : {"join", "default", "snooze", "dismiss"})
        desktop.invoke(7, QLatin1String(action));
    desktop.closed(7, 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return done.size() == 5; }));
    EXPECT_THAT(done, ElementsAre("join Design review", "join Design review", "snooze Design review",
                                  "dismiss Design review", "dismiss Design review"));
    notified.hide();
    EXPECT_FALSE(notified.isVisible());
    qunsetenv("MIVORA_PANEL");
}

TEST_F(JoinPanelControllerTest, theNotificationGoesWithTheProgram)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    qputenv("MIVORA_PANEL", "notification");
    support::PrivateBus bus;
    kelo::FakeNotifications desktop(bus.connection());
    {
        JoinPanelController notified(prefs, views, {}, now, bus.connection());
        notified.show(review, now);
        ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.calls.size() == 1; }));
        QTest::qWait(50);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.calls.size() == 2; }));
    EXPECT_EQ(desktop.calls.back(), "close 7");
    qunsetenv("MIVORA_PANEL");
}

TEST_F(JoinPanelControllerTest, theNotificationGoesWithTheProcess)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    support::PrivateBus bus;
    kelo::FakeNotifications desktop(bus.connection());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLatin1(bus.address()));
    environment.insert(QStringLiteral("MIVORA_PANEL"), QStringLiteral("notification"));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationDirPath() + QStringLiteral("/panel-puppet"), {});
    program.write("show\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.calls.size() == 1; }, 20'000));
    QTest::qWait(100);
    program.write("quit\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, 20'000));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.calls.size() == 2; }));
    EXPECT_EQ(desktop.calls.back(), "close 7");
}

TEST_F(JoinPanelControllerTest, isAWindowWhereThereAreNoNotificationsEither)
{
    qputenv("MIVORA_PANEL", "notification");
    JoinPanelController lonely(prefs, views, {}, now, QDBusConnection(QStringLiteral("none")));
    lonely.show(review, now);
    EXPECT_TRUE(QTest::qWaitFor([&] { return lonely.controller().isVisible(); }));
    lonely.hide();
    EXPECT_FALSE(lonely.isVisible());
    qunsetenv("MIVORA_PANEL");
}

TEST_F(JoinPanelControllerTest, doesNotClaimToBeVisibleWhereNothingCanBeShown)
{
    for (const char *platform : {"window", "notification"}) {
        const QByteArray plugin = qgetenv("MIVORA_VIEWS");
        qputenv("MIVORA_VIEWS", "/nonexistent/views.so");
        qputenv("MIVORA_PANEL", platform);
        kelo::ViewLoader missing(appearance);
        JoinPanelController unseen(prefs, missing, {}, now, QDBusConnection(QStringLiteral("none")));
        unseen.show(review, now);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !unseen.isVisible(); })) << platform;
        qunsetenv("MIVORA_PANEL");
        plugin.isEmpty() ? qunsetenv("MIVORA_VIEWS") : qputenv("MIVORA_VIEWS", plugin);
    }
}

} // namespace mivora
