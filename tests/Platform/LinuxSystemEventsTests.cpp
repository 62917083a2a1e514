#include "Platform/linux/LinuxSystemEvents.h"

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>

using namespace mivora;

namespace {

/// What logind and timedated send, on a bus of the test's own.
QDBusMessage signalOf(const char *path, const char *interface, const char *name)
{
    return QDBusMessage::createSignal(QLatin1String(path), QLatin1String(interface), QLatin1String(name));
}

class SystemEventsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
        QFile(m_folder.filePath(QStringLiteral("Berlin"))).open(QIODevice::WriteOnly);
        QFile(m_folder.filePath(QStringLiteral("Tokyo"))).open(QIODevice::WriteOnly);
        link(QStringLiteral("Berlin"));
        m_bus = std::make_unique<support::PrivateBus>();
        m_systemd.emplace(m_bus->connection());
        for (const char *service : {"org.freedesktop.login1", "org.freedesktop.timedate1"})
            ASSERT_TRUE(m_systemd->registerService(QLatin1String(service)));
        const LinuxSystemEvents::Sources sources{
            m_bus->connection(), m_folder.filePath(QStringLiteral("localtime")), [this] { return m_now; },
            [this](const QDateTime &) { return m_nextDay; }};
        m_events = std::make_unique<LinuxSystemEvents>(sources);
        const auto record = [this](const char *name, void (SystemEvents::*event)()) {
            QObject::connect(m_events.get(), event, [this, name] { m_seen.emplace_back(name); });
        };
        record("wake", &SystemEvents::didWake);
        record("day", &SystemEvents::dayChanged);
        record("zone", &SystemEvents::timeZoneChanged);
        record("clock", &SystemEvents::clockChanged);
    }

    void prepareForSleep(bool asleep) const
    {
        m_systemd->send(
            signalOf("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep")
            << asleep);
    }

    void changeTimedate(const QVariantMap &changed, const QStringList &invalidated) const
    {
        m_systemd->send(
            signalOf("/org/freedesktop/timedate1", "org.freedesktop.DBus.Properties", "PropertiesChanged")
            << QStringLiteral("org.freedesktop.timedate1") << changed << invalidated);
    }

    /// Replaced by renaming, as timedated and installers do.
    void link(const QString &zone) const
    {
        const QString path = m_folder.filePath(QStringLiteral("localtime"));
        QFile::link(zone, path + QStringLiteral(".new"));
        ASSERT_EQ(std::rename(QFile::encodeName(path + QStringLiteral(".new")).constData(),
                              QFile::encodeName(path).constData()),
                  0);
    }

    /// Waits for that many events, and compares all that came.
    void expect(const std::vector<std::string> &events)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_seen.size() >= events.size(); }));
        EXPECT_EQ(std::exchange(m_seen, {}), events);
    }

    QTemporaryDir m_folder;
    QDateTime m_now = QDateTime::currentDateTime();
    QDateTime m_nextDay = m_now.addDays(1);
    std::unique_ptr<support::PrivateBus> m_bus;
    std::optional<QDBusConnection> m_systemd;
    std::unique_ptr<LinuxSystemEvents> m_events;
    std::vector<std::string> m_seen;
};

} // namespace

TEST_F(SystemEventsTest, zoneIsToldByTimedateHoweverItSaysSoAndByItsFile)
{
    changeTimedate({{QStringLiteral("NTPSynchronized"), true}}, {});
    changeTimedate({{QStringLiteral("Timezone"), QStringLiteral("Asia/Tokyo")}}, {});
    changeTimedate({}, {QStringLiteral("Timezone")});
    expect({"zone", "zone"});
    QFile(m_folder.filePath(QStringLiteral("passwd"))).open(QIODevice::WriteOnly);
    link(QStringLiteral("Tokyo"));
    expect({"zone"});
    // Another zone can be another day.
    m_now = m_now.addDays(1);
    link(QStringLiteral("Berlin"));
    expect({"zone", "day"});
}

TEST_F(SystemEventsTest, theEndOfSleepAndEveryMidnightAreTold)
{
    prepareForSleep(true);
    for (int night = 0; night < 2; ++night) {
        m_nextDay = QDateTime::currentDateTime().addMSecs(100);
        prepareForSleep(false);
        expect({"wake"});
        m_now = m_now.addDays(1);
        m_nextDay = QDateTime::currentDateTime().addDays(1);
        expect({"day"});
    }
    m_now = m_now.addDays(2);
    prepareForSleep(false);
    expect({"wake", "day"});
}
