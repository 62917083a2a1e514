#include "Platform/linux/LinuxSystemEvents.h"

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDir>
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
        record("wake", &SystemEvents::didWake);
        record("day", &SystemEvents::dayChanged);
        record("zone", &SystemEvents::timeZoneChanged);
        record("clock", &SystemEvents::clockChanged);
    }

    void record(const char *name, void (SystemEvents::*event)())
    {
        QObject::connect(m_events.get(), event, [this, name] { m_seen.emplace_back(name); });
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

    std::vector<std::string> seenWithin(int milliseconds)
    {
        QTest::qWait(milliseconds);
        return std::exchange(m_seen, {});
    }

    QTemporaryDir m_folder;
    QDateTime m_now = QDateTime::currentDateTime();
    QDateTime m_nextDay = m_now.addDays(1);
    std::unique_ptr<support::PrivateBus> m_bus;
    std::optional<QDBusConnection> m_systemd;
    std::unique_ptr<LinuxSystemEvents> m_events;
    std::vector<std::string> m_seen;
};

const QVariantMap tokyo{{QStringLiteral("Timezone"), QStringLiteral("Asia/Tokyo")}};
const QVariantMap synchronised{{QStringLiteral("NTPSynchronized"), true}};

} // namespace

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SystemEventsTest, wakeIsTheEndOfSleepOnly)
{
    prepareForSleep(true);
    EXPECT_THAT(seenWithin(100), IsEmpty());
    prepareForSleep(false);
    EXPECT_THAT(seenWithin(100), ElementsAre("wake"));
    m_now = m_now.addDays(2);
    prepareForSleep(false);
    EXPECT_THAT(seenWithin(100), ElementsAre("wake", "day"));
}

TEST_F(SystemEventsTest, zoneIsToldByTimedateHoweverItSaysSo)
{
    changeTimedate(synchronised, {});
    EXPECT_THAT(seenWithin(100), IsEmpty());
    changeTimedate(tokyo, {});
    EXPECT_THAT(seenWithin(100), ElementsAre("zone"));
    changeTimedate({}, {QStringLiteral("Timezone")});
    EXPECT_THAT(seenWithin(100), ElementsAre("zone"));
}

TEST_F(SystemEventsTest, zoneIsToldByItsFileWithoutTimedate)
{
    QFile(m_folder.filePath(QStringLiteral("passwd"))).open(QIODevice::WriteOnly);
    EXPECT_THAT(seenWithin(150), IsEmpty());
    link(QStringLiteral("Tokyo"));
    EXPECT_THAT(seenWithin(150), ElementsAre("zone"));
    // Another zone can be another day.
    m_now = m_now.addDays(1);
    link(QStringLiteral("Berlin"));
    EXPECT_THAT(seenWithin(150), ElementsAre("zone", "day"));
}

TEST_F(SystemEventsTest, everyMidnightIsToldAndTheNextIsWaitedFor)
{
    for (int night = 0; night < 3; ++night) {
        m_nextDay = QDateTime::currentDateTime().addMSecs(100);
        prepareForSleep(false);
        EXPECT_THAT(seenWithin(50), ElementsAre("wake"));
        m_now = m_now.addDays(1);
        m_nextDay = QDateTime::currentDateTime().addDays(1);
        EXPECT_THAT(seenWithin(150), ElementsAre("day"));
    }
}

/// The clock of the machine that runs the tests can't be set, but the kernel tells what it was asked for.
TEST(RealTimeAlarm, isCancelledWhenTheClockIsSet)
{
    const QDateTime time = QDateTime::currentDateTime().addSecs(3600);
    RealTimeAlarm alarm;
    alarm.set(time);
    int found = 0;
    for (const QString &name : QDir(QStringLiteral("/proc/self/fdinfo")).entryList(QDir::Files)) {
        QFile info(QStringLiteral("/proc/self/fdinfo/") + name);
        const QByteArray text = info.open(QIODevice::ReadOnly) ? info.readAll() : QByteArray();
        // 0 is CLOCK_REALTIME, 03 is TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET.
        if (text.contains("clockid: 0\n") && text.contains("settime flags: 03\n"))
            ++found;
    }
    EXPECT_EQ(found, 1);
}
