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

bool isOpen(TrayDesktop &desktop, const char *title)
{
    return desktop.act({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                        QStringLiteral("^%1$").arg(QLatin1String(title))});
}

// Also gives it the keyboard.
bool open(RunningMivora &mivora, TrayDesktop &desktop, const char *page, const char *title)
{
    mivora.command({QStringLiteral("settings"), QLatin1String(page)});
    return waitFor([&] { return isOpen(desktop, title); }, 20s) &&
           desktop.act({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                        QStringLiteral("^%1$").arg(QLatin1String(title)), QStringLiteral("windowactivate"),
                        QStringLiteral("--sync")});
}

void press(TrayDesktop &desktop, const char *key, int times = 1)
{
    for (int i = 0; i < times; ++i)
        desktop.act({QStringLiteral("key"), QLatin1String(key)});
    waitFor(200ms);
}

} // namespace

TEST(SettingsOnDesktop, recordTheKeysThatWouldCloseThem)
{
    if (!TrayDesktop::isInstalled())
        GTEST_SKIP() << "the status area's programs are not installed";
    TrayDesktop desktop;
    RunningMivora mivora(desktop, {{QStringLiteral("Design review"), 600s, {}}});
    mivora.set(QStringLiteral("joinHotKey"), QStringLiteral(R"({"keyCode":38,"modifiers":768})"));
    mivora.start();
    ASSERT_TRUE(mivora.isShown());
    ASSERT_TRUE(open(mivora, desktop, "general", "General"));
    press(desktop, "Tab", 8);
    press(desktop, "space");
    press(desktop, "alt+F4");
    EXPECT_TRUE(isOpen(desktop, "General"));
    // It was recorded, and the window manager has it: so there is no shortcut now, and an alert that says
    // why.
    const auto stored = [&] {
        return mivora.command(
            {QStringLiteral("defaults"), QStringLiteral("read"), QStringLiteral("joinHotKey")});
    };
    EXPECT_TRUE(waitFor([&] { return stored().status != 0; })) << stored().output.toStdString();
    EXPECT_TRUE(isOpen(desktop, "Mivora"));
    ASSERT_TRUE(open(mivora, desktop, "general", "General"));
    press(desktop, "alt+F4");
    EXPECT_FALSE(isOpen(desktop, "General")) << "nothing is recorded any more";
}

TEST(SettingsOnDesktop, endTheProgramWithTheShortcutOfItsMenu)
{
    if (!TrayDesktop::isInstalled())
        GTEST_SKIP() << "the status area's programs are not installed";
    TrayDesktop desktop;
    RunningMivora mivora(desktop, {{QStringLiteral("Design review"), 600s, {}}});
    mivora.start();
    ASSERT_TRUE(mivora.isShown());
    ASSERT_TRUE(open(mivora, desktop, "general", "General"));
    press(desktop, "ctrl+q");
    EXPECT_TRUE(waitFor([&] { return !mivora.isRunning(); }));
    EXPECT_EQ(mivora.exitStatus(), 0);
}

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

    ASSERT_TRUE(open(mivora, desktop, "calendars", "Calendars"));
    press(desktop, "Tab", 20);
    ASSERT_TRUE(open(mivora, desktop, "general", "General"));
    EXPECT_GT(residentMegabytes(mivora), resident + 10) << "the window was never there";
    press(desktop, "ctrl+w");
    ASSERT_FALSE(isOpen(desktop, "General"));

    // A window that is opened again soon is kept for a minute.
    EXPECT_TRUE(waitFor([&] { return residentMegabytes(mivora) <= resident + 20; }, 90s))
        << resident << " MB before, " << residentMegabytes(mivora) << " MB after";
    waitFor(3s);
    // One refresh more or less may fall into the time.
    EXPECT_LE(wakeUps(mivora, 15s), idle + 12);
}

} // namespace mivora
