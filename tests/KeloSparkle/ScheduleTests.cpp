#include "KeloSparkle/MeteredConnection.h"
#include "KeloSparkle/UpdateSchedule.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

namespace {

constexpr qint64 minutes = 60;
constexpr qint64 hours = 3600;
const QDateTime launch = QDateTime::fromString(QStringLiteral("2026-03-10T09:00:00Z"), Qt::ISODate);

/// With a clock that is set by hand.
struct ScheduleUnderTest
{
    explicit ScheduleUnderTest(const QString &file = QStringLiteral("updates.ini"))
        : memory(folder.filePath(file))
    {
        QObject::connect(&schedule, &UpdateSchedule::due, [this] {
            ++dues;
            memory.setLastCheck(now);
        });
        schedule.start();
    }

    int duesAfter(qint64 seconds)
    {
        now = now.addSecs(seconds);
        dues = 0;
        schedule.tick();
        // The schedule's own question was asked before this one, so it is answered before.
        bool isAnswered = false;
        askWhetherMetered(bus, &schedule, [&](bool) { isAnswered = true; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return isAnswered; }));
        return dues;
    }

    QTemporaryDir folder;
    UpdateMemory memory;
    QDBusConnection bus{QStringLiteral("none")};
    QDateTime now = launch;
    UpdateSchedule schedule{memory, [this] { return bus; }, [this] { return now; }};
    int dues = 0;
};

} // namespace

TEST(ScheduleTests, theNextCheckIsADayAfterTheLastButNotAtTheLaunch)
{
    const struct
    {
        const char *name;
        QDateTime lastCheck;
        double spread;
        qint64 secondsAfterLaunch;
    } rows[] = {
        {"never", {}, 0, 10 * minutes},
        {"never, last of all", {}, 1, 60 * minutes},
        {"a day ago", launch.addDays(-1), 0.5, 60 * minutes},
        {"an hour ago", launch.addSecs(-hours), 0, 23 * hours},
        {"an hour ago, last of all", launch.addSecs(-hours), 1, 25 * hours},
        {"in the future", launch.addDays(400), 0, 10 * minutes},
    };

    for (const auto &row : rows) {
        const QDateTime next = nextScheduledCheck({launch, launch, row.lastCheck, row.spread});
        EXPECT_EQ(launch.secsTo(next), row.secondsAfterLaunch) << row.name;
    }
}

TEST(ScheduleTests, isDueOnceADayAndRemembersItOverRestarts)
{
    ScheduleUnderTest used;
    EXPECT_EQ(used.duesAfter(-400 * 24 * hours), 0) << "the clock is set right";
    EXPECT_EQ(used.duesAfter(9 * minutes), 0);
    EXPECT_EQ(used.duesAfter(52 * minutes), 1);
    EXPECT_EQ(used.duesAfter(23 * hours), 0);
    EXPECT_EQ(used.duesAfter(3 * hours), 1);

    UpdateMemory again(used.folder.filePath(QStringLiteral("updates.ini")));
    EXPECT_EQ(again.lastCheck(), used.now);
}

TEST(ScheduleTests, isDueOnceADayEvenIfNothingCanBeWritten)
{
    ScheduleUnderTest used(QStringLiteral("taken/updates.ini"));
    ASSERT_TRUE(QFile(used.folder.filePath(QStringLiteral("taken"))).open(QIODevice::WriteOnly));
    EXPECT_EQ(used.duesAfter(61 * minutes), 1);
    EXPECT_EQ(used.duesAfter(2 * hours), 0);
    used.memory.setAnnouncedVersion(QStringLiteral("1.1"));
    EXPECT_EQ(used.memory.announcedVersion(), QStringLiteral("1.1"));
}

} // namespace kelo
