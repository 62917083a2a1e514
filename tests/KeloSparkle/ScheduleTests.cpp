#include "KeloSparkle/UpdateSchedule.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kelo {

namespace {

constexpr qint64 minutes = 60;
constexpr qint64 hours = 3600;
const QDateTime launch = QDateTime::fromString(QStringLiteral("2026-03-10T09:00:00Z"), Qt::ISODate);

/// A schedule without a system bus, so that no connection is metered, and with a clock that is set by hand.
struct ScheduleUnderTest
{
    QTemporaryDir folder;
    UpdateMemory memory;
    QDateTime now = launch;
    UpdateSchedule schedule{memory, [] { return QDBusConnection(QStringLiteral("none")); },
                            [this] { return now; }};
    int dues = 0;

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
        for (int i = 0; i < 20 && dues == 0; ++i)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        return dues;
    }
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
        {"long ago", launch.addDays(-30), 0, 10 * minutes},
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
    ScheduleUnderTest first;
    EXPECT_EQ(first.duesAfter(9 * minutes), 0);
    EXPECT_EQ(first.duesAfter(52 * minutes), 1);
    EXPECT_EQ(first.duesAfter(23 * hours), 0);
    EXPECT_EQ(first.duesAfter(3 * hours), 1);

    UpdateMemory again(first.folder.filePath(QStringLiteral("updates.ini")));
    EXPECT_EQ(again.lastCheck(), first.now);
}

TEST(ScheduleTests, isDueOnceADayEvenIfNothingCanBeWritten)
{
    ScheduleUnderTest used(QStringLiteral("taken/updates.ini"));
    QFile file(used.folder.filePath(QStringLiteral("taken")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(used.duesAfter(61 * minutes), 1);
    EXPECT_EQ(used.duesAfter(2 * hours), 0);
    used.memory.setAnnouncedVersion(QStringLiteral("1.1"));
    EXPECT_EQ(used.memory.announcedVersion(), QStringLiteral("1.1"));
    EXPECT_EQ(used.duesAfter(25 * hours), 1);
}

TEST(ScheduleTests, aClockThatIsSetRightDoesNotPutItOffForYears)
{
    ScheduleUnderTest launchedInTheFuture;
    EXPECT_EQ(launchedInTheFuture.duesAfter(-400 * 24 * hours), 0);
    EXPECT_EQ(launchedInTheFuture.duesAfter(61 * minutes), 1);

    ScheduleUnderTest checkedInTheFuture;
    EXPECT_EQ(checkedInTheFuture.duesAfter(61 * minutes), 1);
    EXPECT_EQ(checkedInTheFuture.duesAfter(-400 * 24 * hours), 0);
    EXPECT_EQ(checkedInTheFuture.duesAfter(61 * minutes), 1);
    EXPECT_EQ(checkedInTheFuture.duesAfter(23 * hours), 0);
}

} // namespace kelo
