#include "desktop/MivoraOnDesktop.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

// The settings of the real program, with the calendars of somebody who has many.
namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::RunningMivora;
using support::waitFor;

const support::CalendarEntry review{QStringLiteral("Design review"), 600s, {}};

// How often the program's threads have waited for something to happen.
int waits(const RunningMivora &mivora)
{
    static const QRegularExpression line(QStringLiteral("\nvoluntary_ctxt_switches:\\s+(\\d+)"));
    int sum = 0;
    const QString tasks = QStringLiteral("/proc/%1/task/").arg(mivora.processId());
    for (const QString &task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks + task + QStringLiteral("/status"));
        if (file.open(QFile::ReadOnly))
            sum += line.match(QString::fromLatin1(file.readAll())).captured(1).toInt();
    }
    return sum;
}

int wakeUps(const RunningMivora &mivora, std::chrono::milliseconds time)
{
    const int before = waits(mivora);
    waitFor(time);
    return waits(mivora) - before;
}

class SettingsOnDesktop : public support::MivoraOnDesktop
{
protected:
    // 200 in 12 accounts.
    static void writeCalendars()
    {
        for (int i = 0; i < 200; ++i) {
            const QString folder = QStringLiteral("calendars/account%1/calendar%2").arg(i % 12).arg(i);
            const QByteArray number = QByteArray::number(i);
            desktop->write(folder + QStringLiteral("/displayname"), "Calendar " + number);
            desktop->write(folder + QStringLiteral("/event.ics"),
                           "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:VEVENT\r\nUID:" + number +
                               "\r\nDTSTART:20200101T100000Z\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
        }
    }

    static bool find(const char *title, const QStringList &action = {})
    {
        const QString pattern = QStringLiteral("^%1$").arg(QLatin1String(title));
        return desktop->act(QStringList{QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                        QStringLiteral("--name"), pattern} +
                            action);
    }

    static bool isOpen(const char *title) { return find(title); }

    static bool isClosed(const char *title)
    {
        return waitFor([&] { return !isOpen(title); });
    }

    // Also gives it the keyboard.
    bool open(const char *page, const char *title)
    {
        mivora->command({QStringLiteral("settings"), QLatin1String(page)});
        return waitFor([&] { return isOpen(title); }, 20s) &&
               find(title, {QStringLiteral("windowactivate"), QStringLiteral("--sync")});
    }

    static void press(const char *key, int times = 1)
    {
        desktop->act({QStringLiteral("key"), QStringLiteral("--repeat"), QString::number(times),
                      QStringLiteral("--delay"), QStringLiteral("30"), QLatin1String(key)});
        waitFor(200ms);
    }
};

} // namespace

TEST_F(SettingsOnDesktop, recordTheKeysThatWouldCloseThem)
{
    prepare({review});
    mivora->set(QStringLiteral("joinHotKey"), QStringLiteral(R"({"keyCode":38,"modifiers":768})"));
    mivora->start();
    ASSERT_TRUE(mivora->isShown());
    ASSERT_TRUE(open("general", "General"));
    press("Tab", 8);
    press("space");
    press("alt+F4");
    EXPECT_TRUE(isOpen("General"));
    // It was recorded, and the window manager has it: so there is no shortcut now, and an alert that says
    // why.
    const auto stored = [&] {
        return mivora->command(
            {QStringLiteral("defaults"), QStringLiteral("read"), QStringLiteral("joinHotKey")});
    };
    EXPECT_TRUE(waitFor([&] { return stored().status != 0; })) << stored().output.toStdString();
    EXPECT_TRUE(waitFor([&] { return isOpen("Mivora"); }));
    ASSERT_TRUE(open("general", "General"));
    press("alt+F4");
    EXPECT_TRUE(isClosed("General")) << "nothing is recorded any more";
}

TEST_F(SettingsOnDesktop, wakeNobodyOnceTheyAreClosedAndEndTheProgramWithItsShortcut)
{
    writeCalendars();
    start({review});
    waitFor(1s);
    // What a refresh or another program of the desktop brings about doesn't last.
    constexpr auto time = 2s;
    const int idle = std::min(wakeUps(*mivora, time), wakeUps(*mivora, time));
    ASSERT_TRUE(open("calendars", "Calendars"));
    press("Tab", 20);
    ASSERT_TRUE(open("general", "General"));
    press("ctrl+w");
    EXPECT_TRUE(isClosed("General"));
    int closed = 0;
    EXPECT_TRUE(waitFor([&] { return (closed = wakeUps(*mivora, time)) <= idle + 1; }, 20s))
        << idle << " before, " << closed << " after";

    ASSERT_TRUE(open("general", "General"));
    press("ctrl+q");
    EXPECT_TRUE(waitFor([&] { return !mivora->isRunning(); }));
    EXPECT_EQ(mivora->exitStatus(), 0);
}

} // namespace mivora
