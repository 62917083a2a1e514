#include "KeloPanel/DesktopNotification.h"

#include "support/FakeNotifications.h"
#include "support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <gmock/gmock.h>

namespace kelo {

using testing::ElementsAre;

class DesktopNotificationTest : public testing::Test
{
public:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
        bus.emplace();
        desktop.emplace(bus->connection());
        notification.emplace(bus->connection());
    }

    bool waitForCalls(std::size_t count)
    {
        return QTest::qWaitFor([&] { return desktop->calls.size() >= count; });
    }

    std::optional<support::PrivateBus> bus;
    std::optional<FakeNotifications> desktop;
    std::optional<DesktopNotification> notification;
};

TEST_F(DesktopNotificationTest, replacesWhatItShowed)
{
    notification->show(
        {.summary = QStringLiteral("One"), .body = QStringLiteral("a <b>"), .actions = {}, .stays = true});
    ASSERT_TRUE(waitForCalls(1));
    notification->show({.summary = QStringLiteral("Two"),
                        .body = {},
                        .actions = {{QStringLiteral("x"), QStringLiteral("X")}},
                        .stays = false});
    notification->show({.summary = QStringLiteral("Three"), .body = {}, .actions = {}, .stays = false});
    ASSERT_TRUE(waitForCalls(2));
    QTest::qWait(50);
    EXPECT_EQ(desktop->calls.front(), "notify 0 One|a &lt;b&gt;||0");
    EXPECT_EQ(desktop->calls.back(), "notify 7 Three|||-1") << "only the latest matters";
}

TEST_F(DesktopNotificationTest, isNotLeftBehindByAProgramThatEnds)
{
    QThread elsewhere;
    desktop->moveToThread(&elsewhere);
    elsewhere.start();
    notification->show({.summary = QStringLiteral("One"), .body = {}, .actions = {}, .stays = true});
    notification->close();
    notification.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop->answered == 2; }));
    elsewhere.quit();
    elsewhere.wait();
    EXPECT_THAT(desktop->calls, ElementsAre("notify 0 One|||0", "close 7"));
}

TEST_F(DesktopNotificationTest, tellsOfItsOwnActionsOnly)
{
    QSignalSpy actions(&*notification, &DesktopNotification::actionInvoked);
    QSignalSpy dismissals(&*notification, &DesktopNotification::dismissed);
    QSignalSpy expiries(&*notification, &DesktopNotification::expired);
    notification->show({.summary = QStringLiteral("One"), .body = {}, .actions = {}, .stays = true});
    ASSERT_TRUE(waitForCalls(1));
    QTest::qWait(50);
    desktop->invoke(8, QStringLiteral("join"));
    desktop->invoke(7, QStringLiteral("snooze"));
    desktop->closed(8, 2);
    desktop->closed(7, 1);
    desktop->closed(7, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return actions.count() > 0; }));
    QTest::qWait(50);
    ASSERT_EQ(actions.count(), 1);
    EXPECT_EQ(actions[0][0].toString(), QLatin1String("snooze"));
    EXPECT_EQ(dismissals.count(), 0) << "it had expired before";
    EXPECT_EQ(expiries.count(), 1);
}

TEST(DesktopNotificationWithoutDesktop, tellsWhenNothingCanBeShown)
{
    DesktopNotification notification(QDBusConnection(QStringLiteral("none")));
    QSignalSpy failures(&notification, &DesktopNotification::failed);
    notification.show({.summary = QStringLiteral("One"), .body = {}, .actions = {}, .stays = true});
    EXPECT_TRUE(QTest::qWaitFor([&] { return failures.count() == 1; }));
    notification.show({.summary = QStringLiteral("Two"), .body = {}, .actions = {}, .stays = true});
    notification.close();
    QTest::qWait(50);
    EXPECT_EQ(failures.count(), 1) << "nobody waits for the second one any more";
}

} // namespace kelo
