#include "KeloSparkle/MeteredConnection.h"
#include "KeloSparkle/UpdateSchedule.h"

#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <optional>

namespace kelo {

namespace {

/// Plays NetworkManager's part that is asked for.
class FakeNetworkManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.NetworkManager")
    Q_PROPERTY(uint Metered MEMBER m_metered)

public:
    bool appearOn(QDBusConnection bus)
    {
        return bus.registerObject(QStringLiteral("/org/freedesktop/NetworkManager"), this,
                                  QDBusConnection::ExportAllProperties) &&
               bus.registerService(QStringLiteral("org.freedesktop.NetworkManager"));
    }

    uint m_metered = 0;
};

std::optional<bool> askedOn(const QDBusConnection &bus)
{
    std::optional<bool> answer;
    QObject context;
    askWhetherMetered(bus, &context, [&](bool isMetered) { answer = isMetered; });
    QElapsedTimer timer;
    for (timer.start(); !answer && timer.elapsed() < 5000;)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return answer;
}

} // namespace

TEST(MeteredConnectionTests, isWhatNetworkManagerSays)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "no dbus-daemon";
    support::PrivateBus bus;
    EXPECT_EQ(askedOn(bus.connection()), false) << "without NetworkManager";

    FakeNetworkManager manager;
    ASSERT_TRUE(manager.appearOn(bus.connection()));
    // Unknown, yes, no, guessed yes, guessed no.
    const bool expected[] = {false, true, false, true, false};
    for (uint value = 0; value < 5; ++value) {
        manager.m_metered = value;
        EXPECT_EQ(askedOn(bus.connection()), expected[value]) << value;
    }
}

TEST(MeteredConnectionTests, nothingIsDueWhileTheConnectionIsMetered)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "no dbus-daemon";
    support::PrivateBus bus;
    FakeNetworkManager manager;
    ASSERT_TRUE(manager.appearOn(bus.connection()));

    const QTemporaryDir folder;
    UpdateMemory memory(folder.filePath(QStringLiteral("updates.ini")));
    QDateTime now = QDateTime::currentDateTimeUtc();
    UpdateSchedule schedule(
        memory, [&] { return bus.connection(); }, [&] { return now; });
    schedule.start();
    now = now.addDays(2);
    int dues = 0;
    QObject::connect(&schedule, &UpdateSchedule::due, [&] { ++dues; });
    const auto duesOfATick = [&] {
        dues = 0;
        schedule.tick();
        // Its question was asked before this one, so it is answered before.
        askedOn(bus.connection());
        return dues;
    };
    manager.m_metered = 1;
    EXPECT_EQ(duesOfATick(), 0);
    manager.m_metered = 2;
    EXPECT_EQ(duesOfATick(), 1);
}

} // namespace kelo

#include "MeteredConnectionTests.moc"
