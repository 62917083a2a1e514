#include "CalendarEds/EdsMaker.h"
#include "CalendarEds/EdsWorld.h"
#include "CalendarEds/RadicaleServer.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gmock/gmock.h>

namespace support {

namespace {

using testing::HasSubstr;

constexpr int longestRun = 60'000;

struct Outcome
{
    std::string output;
    std::string errors;
};

QString program()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/mivora");
}

Outcome run(const QStringList &arguments)
{
    QProcess process;
    process.start(program(), arguments);
    if (!process.waitForFinished(longestRun))
        process.kill();
    process.waitForFinished(5000);
    return {process.readAllStandardOutput().toStdString(), process.readAllStandardError().toStdString()};
}

std::string event(const std::string &uid, int minutesFromNow, const std::string &more = {})
{
    const QDateTime time = QDateTime::currentDateTimeUtc().addSecs(60 * minutesFromNow);
    const std::string start = time.toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toStdString();
    std::string text = "BEGIN:VEVENT\r\nUID:";
    text.append(uid).append("\r\nSUMMARY:").append(uid).append("\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:");
    return text.append(start).append("\r\nDURATION:PT30M\r\n").append(more).append("END:VEVENT\r\n");
}

std::string calendarText(const std::string &event)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//EN\r\n" + event + "END:VCALENDAR\r\n";
}

/// `mivora agenda --follow --json`.
class FollowedAgenda final
{
public:
    FollowedAgenda()
    {
        m_process.start(program(),
                        {QStringLiteral("agenda"), QStringLiteral("--follow"), QStringLiteral("--json")});
    }

    ~FollowedAgenda()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    /// Waits until \a condition holds; it is asked again whenever the program says something.
    template<typename Condition> bool waitFor(Condition condition)
    {
        const QDeadlineTimer deadline(longestRun);
        for (read(); !condition(); read()) {
            if (deadline.hasExpired())
                return false;
            m_process.waitForReadyRead(100);
        }
        return true;
    }

    /// Waits until the next meeting has this title; with an empty title, until there is none.
    bool waitForNext(const QString &title)
    {
        return waitFor([&] { return m_isRead && next().value(QLatin1String("title")).toString() == title; });
    }

    /// Waits until the program said \a text on its standard error.
    bool waitForProblem(const char *text)
    {
        return waitFor([&] { return m_problems.contains(text); });
    }

    QJsonObject next() const
    {
        const QJsonArray today = m_agenda.value(QLatin1String("today")).toArray();
        for (const auto &meeting : today)
            if (meeting[QLatin1String("id")] == m_agenda.value(QLatin1String("next")))
                return meeting.toObject();
        return {};
    }

    std::string problems() const { return m_problems.toStdString(); }

    int meetingsToday() const { return int(m_agenda.value(QLatin1String("today")).toArray().size()); }

private:
    void read()
    {
        m_problems += m_process.readAllStandardError();
        while (m_process.canReadLine()) {
            m_agenda = QJsonDocument::fromJson(m_process.readLine()).object();
            m_isRead = true;
        }
    }

    QProcess m_process;
    QByteArray m_problems;
    QJsonObject m_agenda;
    bool m_isRead = false;
};

/// The whole program beside the real server.
class EdsProgramTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!EdsWorld::isInstalled())
            GTEST_SKIP() << "Evolution Data Server is not installed";
        // A zone where it is about noon, so that every meeting is today's. POSIX signs are turned around.
        const int ahead = 12 - QDateTime::currentDateTimeUtc().time().hour();
        qputenv("TZ", "Etc/GMT" + QByteArray(ahead > 0 ? "-" : "+") + QByteArray::number(std::abs(ahead)));
    }

    void enter(const EdsWorld::Setup &setup = {})
    {
        world = std::make_unique<EdsWorld>(setup);
        run({QStringLiteral("access"), QStringLiteral("allow")});
    }

    static std::string access() { return run({QStringLiteral("access")}).output; }

    std::unique_ptr<EdsWorld> world;
};

TEST_F(EdsProgramTest, isDeniedAccessWhereNothingCanBeRead)
{
    enter({.wrapper = QStringLiteral("/bin/false"), .busRules = {}});
    const Outcome outcome = run({QStringLiteral("access")});
    EXPECT_EQ(outcome.output, "denied\n");
    EXPECT_THAT(outcome.errors, HasSubstr("the desktop's calendars don't answer"));

    enter(
        {.wrapper = {}, .busRules = "<deny send_destination=\"org.gnome.evolution.dataserver.Sources5\"/>"});
    const Outcome refused = run({QStringLiteral("access")});
    EXPECT_EQ(refused.output, "denied\n");
    EXPECT_THAT(refused.errors, HasSubstr("the bus doesn't let Mivora"));

    const PrivateBus emptyBus;
    emptyBus.enter();
    EXPECT_EQ(access(), "denied\n");
    EXPECT_EQ(run({QStringLiteral("access")}).errors, "");
}

TEST_F(EdsProgramTest, waitsForASlowServer)
{
    enter({.wrapper = QStringLiteral("/bin/sh -c 'sleep 2; exec \"$@\"' sh"), .busRules = {}});
    FollowedAgenda agenda;
    EdsMaker maker;
    maker.create(maker.addCalendar("Work"), event("slow", 10));
    EXPECT_TRUE(agenda.waitForNext(QStringLiteral("slow")));
}

TEST_F(EdsProgramTest, showsFoldersAndTheDesktopTogether)
{
    enter();
    EdsMaker maker;
    const std::string text = event("both", 10);
    maker.create(maker.addCalendar("Work"), text);
    QFile file(world->path(QStringLiteral("data/calendars.ics")));
    qputenv("MIVORA_CALENDARS", world->path(QStringLiteral("data")).toLocal8Bit());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(calendarText(text)));
    file.close();
    FollowedAgenda agenda;
    EXPECT_TRUE(agenda.waitForNext(QStringLiteral("both")));
    EXPECT_EQ(agenda.meetingsToday(), 2);
    qunsetenv("MIVORA_CALENDARS");
}

TEST_F(EdsProgramTest, namesAnAccountThatNeedsAPasswordAndFollowsItWhenItHasOne)
{
    if (!RadicaleServer::isInstalled())
        GTEST_SKIP() << "Radicale or curl is not installed";
    enter();
    RadicaleServer server;
    const auto put = [&](int minutesFromNow, const std::string &more) {
        return server.put(QStringLiteral("/ann/work/guarded.ics"),
                          calendarText(event("Guarded", minutesFromNow, more)));
    };
    const std::string fields = "ORGANIZER:mailto:bob@example.com\r\nURL:https://zoom.us/j/123456789\r\n"
                               "ATTENDEE;PARTSTAT=ACCEPTED:mailto:ann@example.com\r\n";
    ASSERT_TRUE(server.makeCalendar(QStringLiteral("/ann/work/")) && put(20, fields));
    EdsMaker maker;
    const std::string calendar =
        maker.addCalDav("Work", server.port(), "/ann/work/", "ann@example.com", "ann");
    maker.create(maker.addCalendar("Open"), event("Open", 30));
    FollowedAgenda agenda;
    EXPECT_TRUE(agenda.waitForNext(QStringLiteral("Open")));
    EXPECT_TRUE(agenda.waitForProblem("\"Work\" is not signed in")) << agenda.problems();
    EXPECT_EQ(agenda.meetingsToday(), 1);
    maker.signIn(calendar, "ann", "secret");
    ASSERT_TRUE(agenda.waitForNext(QStringLiteral("Guarded")));
    EXPECT_EQ(agenda.next()[QLatin1String("participation")], QLatin1String("accepted"));
    EXPECT_EQ(agenda.next()[QLatin1String("joinLink")][QLatin1String("webURL")],
              QLatin1String("https://zoom.us/j/123456789"));
    EXPECT_TRUE(put(40, fields + "SEQUENCE:1\r\n"));
    maker.refresh(calendar);
    EXPECT_TRUE(agenda.waitForNext(QStringLiteral("Open")));
    EXPECT_EQ(agenda.meetingsToday(), 2);
}

} // namespace

} // namespace support
