#include "Platform/linux/LinuxSystemEvents.h"

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

/// logind and timedated are the test's, on a bus of its own, and so are the zone's file and the time of day.
class SystemEventsTest : public testing::Test
{
protected:
    SystemEventsTest()
    {
        for (const char *service : {"org.freedesktop.login1", "org.freedesktop.timedate1"})
            m_systemd.registerService(QLatin1String(service));
        QFile(m_folder.filePath(QStringLiteral("Berlin"))).open(QIODevice::WriteOnly);
        QFile(m_folder.filePath(QStringLiteral("Tokyo"))).open(QIODevice::WriteOnly);
        link("Berlin");
        m_events.emplace(LinuxSystemEvents::Sources{
            m_bus.connection(), m_folder.filePath(QStringLiteral("localtime")), [this] { return m_now; },
            [this](const QDateTime &) { return m_nextDay; }});
        const auto record = [this](const char *name, void (SystemEvents::*event)()) {
            QObject::connect(&*m_events, event, [this, name] { m_seen.emplace_back(name); });
        };
        record("wake", &SystemEvents::didWake);
        record("day", &SystemEvents::dayChanged);
        record("zone", &SystemEvents::timeZoneChanged);
        record("clock", &SystemEvents::clockChanged);
    }

    void send(const char *path, const char *interface, const char *name, const QVariantList &arguments) const
    {
        auto signal =
            QDBusMessage::createSignal(QLatin1String(path), QLatin1String(interface), QLatin1String(name));
        signal.setArguments(arguments);
        m_systemd.send(signal);
    }

    void prepareForSleep(bool asleep) const
    {
        send("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep", {asleep});
    }

    void changeTimedate(const QVariantMap &changed, const QStringList &invalidated) const
    {
        send("/org/freedesktop/timedate1", "org.freedesktop.DBus.Properties", "PropertiesChanged",
             {QStringLiteral("org.freedesktop.timedate1"), changed, invalidated});
    }

    /// Replaced by renaming, as timedated and installers do.
    void link(const char *zone) const
    {
        const QString path = m_folder.filePath(QStringLiteral("localtime"));
        const std::string newPath = QFile::encodeName(path).toStdString() + ".new";
        QFile::link(QLatin1String(zone), QString::fromStdString(newPath));
        ASSERT_EQ(std::rename(newPath.c_str(), QFile::encodeName(path).constData()), 0);
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
    support::PrivateBus m_bus;
    QDBusConnection m_systemd = m_bus.connection();
    std::optional<LinuxSystemEvents> m_events;
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
    link("Tokyo");
    expect({"zone"});
    // Another zone can be another day.
    m_now = m_now.addDays(1);
    link("Berlin");
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
