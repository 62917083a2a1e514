#include "KeloSparkle/MeteredConnection.h"

#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QObject>
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
    QDBusConnection service = bus.connection();
    service.registerObject(QStringLiteral("/org/freedesktop/NetworkManager"), &manager,
                           QDBusConnection::ExportAllProperties);
    ASSERT_TRUE(service.registerService(QStringLiteral("org.freedesktop.NetworkManager")));
    // Unknown, yes, no, guessed yes, guessed no.
    const bool expected[] = {false, true, false, true, false};
    for (uint value = 0; value < 5; ++value) {
        manager.m_metered = value;
        EXPECT_EQ(askedOn(bus.connection()), expected[value]) << value;
    }
}

} // namespace kelo

#include "MeteredConnectionTests.moc"
