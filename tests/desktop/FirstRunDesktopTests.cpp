#include "KeloPanel/backends/X11Connection.h"
#include "desktop/Desktop.h"
#include "support/FakeKeyboard.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

// The program started for the first time, in a home that holds a calendar and nothing else.
namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::waitFor;
using testing::AnyOf;
using testing::HasSubstr;

QByteArray calendarWithMeeting(const QDateTime &start)
{
    const auto utc = [](const QDateTime &time) {
        return time.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toLatin1();
    };
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Design "
           "review\r\n"
           "DTSTART:" +
           utc(start) + "\r\nDTEND:" + utc(start.addSecs(1800)) + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

// So that a meeting in a few minutes is today's, whenever the test runs. The sign of these zones is reversed.
QString zoneWithNoonNow()
{
    const int ahead = 12 - QDateTime::currentDateTimeUtc().time().hour();
    return QStringLiteral("Etc/GMT%1%2")
        .arg(ahead > 0 ? QLatin1Char('-') : QLatin1Char('+'))
        .arg(std::abs(ahead));
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(content) == content.size());
}

/// One run of the program, from its start until this goes.
class Program final
{
public:
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TZ"), zoneWithNoonNow());
        environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QStringLiteral("disabled:"));
        for (const char *name : {"XDG_DATA_HOME", "XDG_STATE_HOME", "MIVORA_CALENDARS"})
            environment.remove(QLatin1String(name));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/mivora"), {});
    }

    ~Program()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
    }
    Q_DISABLE_COPY_MOVE(Program)

    bool hasWindow() const { return owns("_NET_CLIENT_LIST"); }

    bool hasKeyboard() const { return owns("_NET_ACTIVE_WINDOW"); }

    /// What a status area shows; empty while there is no item.
    static std::string title()
    {
        const QDBusConnection bus = QDBusConnection::sessionBus();
        const QString name = QStringLiteral("app.kelo.Mivora");
        if (!bus.interface()->isServiceRegistered(name))
            return {};
        auto message = QDBusMessage::createMethodCall(name, QStringLiteral("/StatusNotifierItem"),
                                                      QStringLiteral("org.freedesktop.DBus.Properties"),
                                                      QStringLiteral("Get"));
        message << QStringLiteral("org.kde.StatusNotifierItem") << QStringLiteral("Title");
        const QDBusReply<QDBusVariant> reply = bus.call(message, QDBus::Block, 5000);
        return reply.value().variant().toString().toStdString();
    }

private:
    bool owns(const char *windowList) const
    {
        const kelo::X11Connection x11;
        const auto windows = x11.values(x11.root(), windowList);
        return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
            const auto id = x11.values(window, "_NET_WM_PID");
            return id.size() == 1 && id[0] == m_process.processId();
        });
    }

    QProcess m_process;
};

bool showsCountdown()
{
    return QString::fromStdString(Program::title()).startsWith(QStringLiteral("Design review · "));
}

} // namespace

TEST(FirstRunOnDesktop, isWalkedThroughWithTheKeyboardAndNeverShownAgain)
{
    if (!support::Desktop::isInstalled())
        GTEST_SKIP() << "openbox, xfce4-panel, xterm, xdotool or dbus-daemon is not installed";
    const support::Desktop desktop;
    support::FakeKeyboard keyboard;
    const auto type = [&](int key) {
        keyboard.tap({key});
        // Two taps of a key within a millisecond would look like one that repeats.
        waitFor(100ms);
    };
    const QString home = qEnvironmentVariable("HOME");
    writeFile(home + QStringLiteral("/.calendars/work.ics"),
              calendarWithMeeting(QDateTime::currentDateTimeUtc().addSecs(900)));
    const QString settings = home + QStringLiteral("/mivora/mivora.conf");
    {
        const Program first;
        ASSERT_TRUE(waitFor([&] { return first.hasKeyboard(); }, 30s));
        EXPECT_FALSE(showsCountdown()) << "it may not read calendars yet";
        type(KEY_ENTER);
        type(KEY_TAB);
        type(KEY_SPACE);
        EXPECT_TRUE(waitFor(showsCountdown, 20s)) << Program::title();
        EXPECT_TRUE(first.hasWindow());
        EXPECT_THAT(contentOf(settings).toStdString(),
                    testing::Not(HasSubstr("hasCompletedOnboarding=true")));
        type(KEY_ENTER);
        type(KEY_ENTER);
        EXPECT_TRUE(waitFor([&] { return !first.hasWindow(); }));
        EXPECT_TRUE(waitFor([&] { return contentOf(settings).contains("hasCompletedOnboarding=true"); }));
        EXPECT_THAT(Program::title(), AnyOf("Design review · 15m", "Design review · 14m"));
    }
    EXPECT_EQ(desktop.typed(), QByteArray()) << "the keys were the walkthrough's alone";

    const Program second;
    ASSERT_TRUE(waitFor(showsCountdown, 30s)) << Program::title();
    EXPECT_FALSE(waitFor([&] { return second.hasWindow(); }, 2s));
}

} // namespace mivora
