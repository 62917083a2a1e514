#include "KeloPanel/DesktopNotification.h"

#include "support/FakeNotifications.h"
#include "support/PrivateBus.h"

#include <QTest>
#include <QThread>
#include <gmock/gmock.h>

namespace kelo {

using testing::ElementsAre;

class DesktopNotificationTest : public testing::Test
{
public:
    DesktopNotificationTest()
    {
        tell(&DesktopNotification::actionInvoked, "action");
        tell(&DesktopNotification::dismissed, "dismissed");
        tell(&DesktopNotification::expired, "expired");
    }

    template<typename Signal> void tell(Signal signal, const char *name)
    {
        QObject::connect(&*notification, signal, [this, name] { told.emplace_back(name); });
    }

    void show(const char *summary) { notification->show({.summary = QLatin1String(summary), .stays = true}); }

    bool waitForCalls(std::size_t count)
    {
        return QTest::qWaitFor([&] { return desktop.answered >= count; });
    }

    std::vector<std::string> told;
    support::PrivateBus bus;
    FakeNotifications desktop{bus.connection()};
    std::optional<DesktopNotification> notification{bus.connection()};
};

TEST_F(DesktopNotificationTest, replacesWhatItShowed)
{
    notification->show({.summary = QStringLiteral("One"), .body = QStringLiteral("a <b>")});
    ASSERT_TRUE(waitForCalls(1));
    notification->show(
        {.summary = QStringLiteral("Two"), .actions = {QStringLiteral("x"), QStringLiteral("X")}});
    notification->close();
    show("Three");
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_THAT(desktop.calls, ElementsAre("notify 0 One|a &lt;b&gt;||-1", "notify 7 Three|||0"))
        << "only the latest matters";
}

TEST_F(DesktopNotificationTest, hasALineWhereThereAreNoButtons)
{
    desktop.capabilities.clear();
    notification->show({.summary = QStringLiteral("One"), .insteadOfActions = QStringLiteral("https://a")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !desktop.calls.empty(); }));
    EXPECT_THAT(desktop.calls, ElementsAre("notify 0 One|\nhttps://a||-1"));
}

TEST_F(DesktopNotificationTest, isNotLeftBehindByAProgramThatEnds)
{
    show("One");
    EXPECT_TRUE(waitForCalls(1)) << "the desktop has told what it can do";
    notification->close();
    EXPECT_TRUE(waitForCalls(2));
    QThread elsewhere;
    desktop.moveToThread(&elsewhere);
    elsewhere.start();
    show("Two");
    notification->close();
    notification.reset();
    EXPECT_TRUE(waitForCalls(4));
    elsewhere.quit();
    elsewhere.wait();
    EXPECT_THAT(desktop.calls, ElementsAre("notify 0 One|||0", "close 7", "notify 0 Two|||0", "close 8"));
}

TEST_F(DesktopNotificationTest, tellsOnceOfItsOwnEnd)
{
    const auto tellsAfter = [&](auto... ends) {
        told.clear();
        const std::size_t count = desktop.answered;
        show("One");
        EXPECT_TRUE(waitForCalls(count + 1));
        desktop.invoke(desktop.id + 1, QStringLiteral("another's"));
        desktop.closed(desktop.id + 1, 2);
        (ends(), ...);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
        return told;
    };
    const auto act = [&] { desktop.invoke(desktop.id, QStringLiteral("snooze")); };
    const auto close = [&] { desktop.closed(desktop.id, 2); };
    const auto expire = [&] { desktop.closed(desktop.id, 1); };
    EXPECT_THAT(tellsAfter(act, close), ElementsAre("action")) << "it is closed since it was acted upon";
    EXPECT_THAT(tellsAfter(close, act), ElementsAre("action")) << "some desktops tell so first";
    EXPECT_THAT(tellsAfter(close), ElementsAre("dismissed"));
    EXPECT_THAT(tellsAfter(expire, close), ElementsAre("expired"));
    EXPECT_THAT(desktop.calls, testing::Each("notify 0 One|||0")) << "what has ended can't be replaced";
}

TEST_F(DesktopNotificationTest, tellsWhenNothingCanBeShown)
{
    notification.emplace(QDBusConnection(QStringLiteral("none")));
    tell(&DesktopNotification::failed, "failed");
    show("One");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
    show("Two");
    notification->close();
    QCoreApplication::processEvents();
    EXPECT_THAT(told, ElementsAre("failed")) << "nobody waits for the second one any more";
}

} // namespace kelo
