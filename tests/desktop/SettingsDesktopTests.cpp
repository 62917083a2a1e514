#include "desktop/Desktop.h"
#include "desktop/RunningMivora.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

// The settings of the real program, with the calendars of somebody who has many.
namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::RunningMivora;
using support::TrayDesktop;
using support::waitFor;

// 200 in 12 accounts.
void writeCalendars(const TrayDesktop &desktop)
{
    for (int i = 0; i < 200; ++i) {
        const QString folder = QStringLiteral("calendars/account%1/calendar%2").arg(i % 12).arg(i);
        const QByteArray number = QByteArray::number(i);
        desktop.write(folder + QStringLiteral("/displayname"), "Calendar " + number);
        desktop.write(folder + QStringLiteral("/event.ics"),
                      "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:VEVENT\r\nUID:" + number +
                          "\r\nDTSTART:20200101T100000Z\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    }
}

QByteArray statusOf(const QString &process)
{
    QFile file(QStringLiteral("/proc/") + process + QStringLiteral("/status"));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

// The first number in the line.
int field(const QByteArray &status, const char *name)
{
    const QRegularExpression line(QStringLiteral("^%1:\\s+(\\d+)").arg(QLatin1String(name)),
                                  QRegularExpression::MultilineOption);
    return line.match(QString::fromLatin1(status)).captured(1).toInt();
}

int residentMegabytes(const RunningMivora &mivora)
{
    return field(statusOf(QString::number(mivora.processId())), "VmRSS") / 1024;
}

// How often its threads have waited for something to happen.
int waits(const RunningMivora &mivora)
{
    int sum = 0;
    const QString tasks = QString::number(mivora.processId()) + QStringLiteral("/task");
    for (const QString &task :
         QDir(QStringLiteral("/proc/") + tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        sum += field(statusOf(tasks + QLatin1Char('/') + task), "voluntary_ctxt_switches");
    return sum;
}

int wakeUps(const RunningMivora &mivora, std::chrono::milliseconds time)
{
    const int before = waits(mivora);
    waitFor(time);
    return waits(mivora) - before;
}

} // namespace

TEST(SettingsOnDesktop, leaveNothingBehindWhenTheyAreClosed)
{
    if (!TrayDesktop::isInstalled())
        GTEST_SKIP() << "the status area's programs are not installed";
    TrayDesktop desktop;
    RunningMivora mivora(desktop, {{QStringLiteral("Design review"), 600s, {}}});
    writeCalendars(desktop);
    mivora.start();
    ASSERT_TRUE(mivora.isShown());
    waitFor(3s);
    const int idle = wakeUps(mivora, 15s);
    const int resident = residentMegabytes(mivora);

    EXPECT_EQ(mivora.command({QStringLiteral("settings"), QStringLiteral("calendars")}).status, 0);
    waitFor(500ms);
    ASSERT_TRUE(desktop.act({QStringLiteral("search"), QStringLiteral("--sync"),
                             QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                             QStringLiteral("^Calendars$"), QStringLiteral("windowfocus")}));
    for (int i = 0; i < 20; ++i)
        desktop.act({QStringLiteral("key"), QStringLiteral("Tab")});
    EXPECT_EQ(mivora.command({QStringLiteral("settings"), QStringLiteral("general")}).status, 0);
    waitFor(500ms);
    EXPECT_GT(residentMegabytes(mivora), resident + 10) << "the window was never there";
    ASSERT_TRUE(desktop.act({QStringLiteral("key"), QStringLiteral("ctrl+w")}));

    // A window that is opened again soon is kept for a minute.
    EXPECT_TRUE(waitFor([&] { return residentMegabytes(mivora) <= resident + 20; }, 90s))
        << resident << " MB before, " << residentMegabytes(mivora) << " MB after";
    waitFor(3s);
    // One refresh more or less may fall into the time.
    EXPECT_LE(wakeUps(mivora, 15s), idle + 12);
}

} // namespace mivora
