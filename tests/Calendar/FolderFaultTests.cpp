#include "Calendar/CalendarFolder.h"

#include <QMutex>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mivora {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

/// Collects the log lines while it lives.
class LogLines
{
public:
    LogLines()
    {
        lines.clear();
        m_previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &text) {
                const QMutexLocker lock(&mutex);
                lines.push_back(std::string(context.category) + ": " + text.toStdString());
            });
    }

    ~LogLines() { qInstallMessageHandler(m_previous); }

    static inline QMutex mutex;
    static inline std::vector<std::string> lines;

private:
    QtMessageHandler m_previous;
};

} // namespace

TEST(FolderFaults, aBrokenFileCostsItselfAloneAndOneLogLine)
{
    const CalendarFolder folder;
    folder.write("work/good.ics", eventText("Good"));
    folder.write("work/empty.ics", "");
    std::string broken = eventText("Broken");
    broken.replace(broken.find("DTSTART:"), 24, "DTSTART:yesterday");
    folder.write("work/bro\n\u009b\u202eken.ics", broken + broken);
    const LogLines log;
    LoadedStore loaded({folder.path()});
    EXPECT_THAT(loaded.titles(), ElementsAre("Good"));
    std::vector<std::string> aboutBroken;
    for (const std::string &line : LogLines::lines) {
        EXPECT_THAT(line, HasSubstr("mivora.calendar: "));
        if (line.find("ken.ics") != std::string::npos)
            aboutBroken.push_back(line);
    }
    EXPECT_THAT(aboutBroken, ElementsAre(AllOf(HasSubstr("bro\\x0a\\xc2\\x9b\\xe2\\x80\\xaeken.ics"),
                                               HasSubstr("line "))));
}

TEST(FolderFaults, anotherWindowDoesNotRepeatOldProblems)
{
    const CalendarFolder folder;
    folder.write("work/a.ics", eventText("A", "20260310T090000Z", "RRULE:FREQ=DAILY\r\n"));
    std::string broken = eventText("B", "20260310T090000Z", "RRULE:FREQ=DAILY\r\n");
    broken += "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:x\r\nDTSTART:never\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    folder.write("work/b.ics", broken);
    const LogLines log;
    LoadedStore loaded({folder.path()});
    const std::size_t before = LogLines::lines.size();
    EXPECT_EQ(before, 1u);
    loaded.titles("2026-08-10T00:00:00Z", "2026-08-11T00:00:00Z");
    EXPECT_TRUE(waitFor([&] { return loaded.changes() > 0; }));
    EXPECT_EQ(LogLines::lines.size(), before);
}

TEST(FolderFaults, anUnreadableFolderIsNamedOnce)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "everything is readable for root";
    const CalendarFolder folder;
    folder.write("work/a.ics", eventText("A"));
    folder.write("secret/b.ics", eventText("B"));
    ASSERT_EQ(::chmod(folder.path("secret").c_str(), 0), 0);
    const LogLines log;
    LoadedStore loaded({folder.path()});
    loaded.store().rescan();
    waitAWhile(std::chrono::milliseconds(100));
    EXPECT_THAT(LogLines::lines, ElementsAre(HasSubstr("secret")));
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
