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
    EXPECT_THAT(desktop->calls, ElementsAre("notify 0 One|a &lt;b&gt;||0", "notify 7 Three|||-1"))
        << "only the latest matters";
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

TEST_F(DesktopNotificationTest, tellsOnceOfItsOwnEnd)
{
    std::vector<std::string> told;
    const auto tell = [&](auto signal, const char *name) {
        QObject::connect(&*notification, signal, &*notification, [&told, name] { told.emplace_back(name); });
    };
    tell(&DesktopNotification::actionInvoked, "action");
    tell(&DesktopNotification::dismissed, "dismissed");
    tell(&DesktopNotification::expired, "expired");
    const auto tellsAfter = [&](auto... ends) {
        told.clear();
        const std::size_t count = desktop->calls.size();
        notification->show({.summary = QStringLiteral("One"), .body = {}, .actions = {}, .stays = true});
        EXPECT_TRUE(waitForCalls(count + 1));
        desktop->invoke(desktop->id + 1, QStringLiteral("another's"));
        desktop->closed(desktop->id + 1, 2);
        (ends(), ...);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
        return told;
    };
    const auto act = [&] { desktop->invoke(desktop->id, QStringLiteral("snooze")); };
    const auto close = [&] { desktop->closed(desktop->id, 2); };
    const auto expire = [&] { desktop->closed(desktop->id, 1); };
    EXPECT_THAT(tellsAfter(act, close), ElementsAre("action")) << "it is closed since it was acted upon";
    EXPECT_THAT(tellsAfter(close, act), ElementsAre("dismissed"));
    EXPECT_THAT(tellsAfter(expire, close), ElementsAre("expired"));
}

TEST(DesktopNotificationWithoutDesktop, tellsWhenNothingCanBeShown)
{
    DesktopNotification notification(QDBusConnection(QStringLiteral("none")));
    QSignalSpy failures(&notification, &DesktopNotification::failed);
    notification.show({.summary = QStringLiteral("One"), .body = {}, .actions = {}, .stays = true});
    EXPECT_TRUE(QTest::qWaitFor([&] { return failures.count() == 1; }));
    notification.show({.summary = QStringLiteral("Two"), .body = {}, .actions = {}, .stays = true});
    notification.close();
    QCoreApplication::processEvents();
    EXPECT_EQ(failures.count(), 1) << "nobody waits for the second one any more";
}

} // namespace kelo
