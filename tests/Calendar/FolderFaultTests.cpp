#include "Calendar/CalendarFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mivora {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

QStringList linesOf(const std::string &log)
{
    return QString::fromStdString(log).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

TEST(FolderFaults, whatIsBrokenCostsItselfAloneAndOneLogLine)
{
    const CalendarFolder folder;
    folder.write("work/empty.ics", "");
    const std::string good = eventText("Good", "20260310T090000Z", "RRULE:FREQ=DAILY\r\n");
    std::string broken = eventText("Broken");
    broken.replace(broken.find("DTSTART:"), 24, "DTSTART:yesterday");
    folder.write("work/bro\n\u009b\u202eken.ics", good + broken + broken);
    testing::internal::CaptureStderr();
    LoadedStore loaded({folder.path()});
    EXPECT_THAT(loaded.titles(), ElementsAre("Good"));
    const QStringList log = linesOf(testing::internal::GetCapturedStderr());
    EXPECT_EQ(log.filter(QStringLiteral("mivora.calendar: ")), log);
    const QStringList about = log.filter(QStringLiteral("ken.ics"));
    ASSERT_EQ(about.size(), 1);
    EXPECT_THAT(about[0].toStdString(),
                AllOf(HasSubstr("bro\\x0a\\xc2\\x9b\\xe2\\x80\\xaeken.ics"), HasSubstr("line ")));
    // Reading it again for other days is no news.
    testing::internal::CaptureStderr();
    loaded.titles("2026-08-10T00:00:00Z", "2026-08-11T00:00:00Z");
    EXPECT_TRUE(waitFor([&] { return loaded.changes() > 0; }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(FolderFaults, anUnreadableFolderIsNamedOnce)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "everything is readable for root";
    const CalendarFolder folder;
    folder.write("work/a.ics", eventText("A"));
    folder.write("secret/b.ics", eventText("B"));
    ASSERT_EQ(::chmod(folder.path("secret").c_str(), 0), 0);
    testing::internal::CaptureStderr();
    LoadedStore loaded({folder.path()});
    loaded.store().rescan();
    waitAWhile(std::chrono::milliseconds(100));
    const QStringList log = linesOf(testing::internal::GetCapturedStderr());
    ASSERT_EQ(log.size(), 1);
    EXPECT_THAT(log[0].toStdString(), HasSubstr("secret"));
    EXPECT_THAT(loaded.titles(), ElementsAre("A"));
    ::chmod(folder.path("secret").c_str(), 0700);
    EXPECT_TRUE(loaded.waitForTitles({"A", "B"}));
}

TEST(FolderFaults, aHugeFileIsReadInBoundedMemory)
{
    const CalendarFolder folder;
    std::string padding;
    for (int i = 0; i < 1000; ++i)
        padding += "X-PADDING:" + std::string(64, 'x') + "\r\n";
    QFile file(QString::fromStdString(folder.path("huge.ics")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const std::string old = eventText("Old", "20200101T090000Z", padding);
    for (int i = 0; i < 1500; ++i)
        file.write(old.data(), qint64(old.size()));
    const std::string today = eventText("Today");
    file.write(today.data(), qint64(today.size()));
    file.close();
    LoadedStore loaded({folder.path()});
    EXPECT_THAT(loaded.titles(), ElementsAre("Today"));
}

} // namespace mivora
