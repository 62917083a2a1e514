#include "CalendarEds/DesktopSubscriptions.h"
#include "CalendarEds/EdsWorld.h"
#include "CalendarFolder/LoadedStore.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <csignal>
#include <gmock/gmock.h>

namespace mivora {

namespace {

using support::EdsWorld;

constexpr const char *moonBase = "BEGIN:VTIMEZONE\r\nTZID:Moon Base\r\nBEGIN:STANDARD\r\n"
                                 "DTSTART:19700101T000000\r\nTZOFFSETFROM:+0130\r\n"
                                 "TZOFFSETTO:+0130\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n";

/// A calendar as the server stores what it knows of it.
std::string source(const std::string &title, const std::string &parent, const std::string &more)
{
    return "[Data Source]\nDisplayName=" + title + "\nEnabled=true\nParent=" + parent + "\n[Calendar]\n" +
           more;
}

/// A CalDAV server on this machine alone, with a calendar of "ann", whose password is "secret".
class Radicale
{
public:
    Radicale()
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost);
        m_port = probe.serverPort();
        probe.close();
        m_folder.write("users", "ann:secret\n");
        m_folder.write("collection-root/ann/work/.Radicale.props", "{\"tag\": \"VCALENDAR\"}");
        m_folder.write("config", "[server]\nhosts = 127.0.0.1:" + std::to_string(m_port) +
                                     "\n[auth]\ntype = htpasswd\nhtpasswd_encryption = plain\n"
                                     "htpasswd_filename = " +
                                     m_folder.path("users") +
                                     "\n[storage]\nfilesystem_folder = " + m_folder.path() + '\n');
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("radicale"),
                        {QStringLiteral("--config"), QString::fromStdString(m_folder.path("config"))});
        waitFor([this] {
            QTcpSocket client;
            client.connectToHost(QHostAddress::LocalHost, m_port);
            return client.waitForConnected(100);
        });
    }

    ~Radicale()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    std::string source() const
    {
        return mivora::source(
            "Work", "caldav-stub",
            "BackendName=caldav\n[Authentication]\nHost=127.0.0.1\nUser=ann\nPort=" + std::to_string(m_port) +
                "\n[Security]\nMethod=none\n[WebDAV Backend]\nResourcePath=/ann/work/\n"
                "EmailAddress=ann@example.com\n");
    }

    void put(const std::string &text) { m_folder.write("collection-root/ann/work/guarded.ics", text); }

private:
    CalendarFolder m_folder;
    QProcess m_process;
    quint16 m_port = 0;
};

/// A web server on this machine alone, for as long as the event loop runs. It knows answers by their paths.
class WebServer
{
public:
    WebServer()
    {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket *client = m_server.nextPendingConnection();
            QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
                const auto path = client->readAll().split(' ').value(1).toStdString();
                const auto &[status, text] = answers.count(path) ? answers[path] : answers["/404"];
                client->write(("HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: " +
                               std::to_string(text.size()) + "\r\n\r\n" + text)
                                  .c_str());
                client->disconnectFromHost();
            });
        });
        start();
    }

    void start()
    {
        m_server.listen(QHostAddress::LocalHost, m_port);
        m_port = m_server.serverPort();
    }

    void stop() { m_server.close(); }

    std::string address(const std::string &path) const
    {
        return "webcal://127.0.0.1:" + std::to_string(m_port) + path;
    }

    std::map<std::string, std::pair<std::string, std::string>> answers{{"/404", {"404 Not Found", {}}}};

private:
    QTcpServer m_server;
    quint16 m_port = 0;
};

/// The store over the real server. Each test finds it not running, and uses a calendar of its own.
class EdsStoryTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        if (!EdsWorld::isInstalled() || QStandardPaths::findExecutable(QStringLiteral("radicale")).isEmpty())
            return;
        world.emplace(std::map<std::string, std::string>{
            {"local", source("Work", "local-stub", "BackendName=local\nColor=#3584e4\n")},
            {"net", server.emplace().source()},
            {"unknown", source("Unknown kind", "local-stub", "BackendName=nonesuch\n")}});
    }

    static void TearDownTestSuite()
    {
        world.reset();
        server.reset();
    }

    void SetUp() override
    {
        if (!world)
            GTEST_SKIP() << "Evolution Data Server or Radicale is not installed";
        killServer();
    }

    void openStore(std::vector<std::string> addresses = {"me@example.com"})
    {
        loaded = std::make_unique<LoadedStore>(std::make_unique<DesktopLoader>(
            DesktopLoader::Setup{.bus = world->bus().connection(), .addresses = std::move(addresses)}));
    }

    AuthorizationStatus status() const { return loaded->store().authorizationStatus(); }

    bool waitForServer()
    {
        const auto isThere = [this] {
            return status() == AuthorizationStatus::fullAccess && world->signalAll(0) >= 2;
        };
        return waitFor(isThere, LoadedStore::patience);
    }

    /// As when it crashes.
    static void killServer()
    {
        world->signalAll(SIGKILL);
        EXPECT_TRUE(waitFor([] { return world->signalAll(0) == 0; }));
    }

    /// What `mivora calendars` prints. A process of its own: the library has one registry in each, which
    /// belongs to the thread that made it.
    static std::string calendars(const QStringList &arguments = {}, const std::string &input = {})
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(MIVORA_PROGRAM), QStringList{QStringLiteral("calendars")} + arguments);
        process.write((input + '\n').c_str());
        process.closeWriteChannel();
        EXPECT_TRUE(
            waitFor([&] { return process.state() == QProcess::NotRunning; }, std::chrono::seconds(60)));
        return process.readAll().toStdString();
    }

    static std::string add(const std::string &address) { return calendars({QStringLiteral("add")}, address); }

    static std::string remove(const std::string &line)
    {
        return calendars({QStringLiteral("remove"), QString::fromStdString(line.substr(0, line.find('\t')))});
    }

    static inline std::optional<Radicale> server;
    static inline std::optional<EdsWorld> world;
    std::unique_ptr<LoadedStore> loaded;
};

} // namespace

TEST_F(EdsStoryTest, tellsWhetherTheServerCanBeHad)
{
    world->setStart("exit 1");
    openStore();
    EXPECT_EQ(status(), AuthorizationStatus::denied);
    world->setStart("sleep 2; exec \"$@\"");
    EXPECT_TRUE(waitForServer());
    world->setStart("exec \"$@\"");
    loaded.reset();
    killServer();
    world->bus().reload("<deny send_destination=\"org.gnome.evolution.dataserver.Sources5\"/>");
    openStore();
    EXPECT_EQ(status(), AuthorizationStatus::restricted);
    world->bus().reload();
    EXPECT_TRUE(waitForServer());
}

TEST_F(EdsStoryTest, followsALocalCalendar)
{
    testing::internal::CaptureStderr();
    openStore();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::HasSubstr("the calendar \"Unknown kind\" can't be opened"));
    const auto has = [this](const std::string &calendar) {
        return testing::Matches(testing::Contains(calendar))(loaded->calendars());
    };
    EXPECT_TRUE(has("desktop:local|Work|On This Computer|#3584e4"));
    const auto source = world->source("local");
    e_source_set_display_name(source.get(), "Office");
    EXPECT_TRUE(e_source_write_sync(source.get(), nullptr, nullptr));
    EXPECT_TRUE(
        waitFor([&] { return has("desktop:local|Office|On This Computer|#3584e4"); }, LoadedStore::patience));

    world->import("local", eventText("series", "20260301T090000Z", "RRULE:FREQ=DAILY;COUNT=60\r\n"));
    EXPECT_TRUE(loaded->waitForTitles({"series"}));
    // One of them to a day far outside of the window.
    world->import("local", eventText("series", "20270601T150000Z", "RECURRENCE-ID:20260310T090000Z\r\n"));
    EXPECT_TRUE(loaded->waitForTitles({}));
    const auto remove = [](const char *recurrenceID, ECalObjModType which) {
        return e_cal_client_remove_object_sync(world->client("local").get(), "series", recurrenceID, which,
                                               E_CAL_OPERATION_FLAG_NONE, nullptr, nullptr);
    };
    EXPECT_TRUE(remove("20260311T090000Z", E_CAL_OBJ_MOD_THIS));
    EXPECT_TRUE(loaded->waitForTitles({}, "2026-03-11T00:00:00Z"));
    EXPECT_TRUE(remove(nullptr, E_CAL_OBJ_MOD_ALL));
    EXPECT_TRUE(loaded->waitForTitles({}, "2026-03-09T00:00:00Z", 4));

    // In days to come, and in a time zone that only the calendar knows.
    std::string later = eventText("later", "20260601T103000");
    later.replace(later.find("DTSTART"), 7, "DTSTART;TZID=Moon Base");
    world->import("local", later.insert(later.find("BEGIN:VEVENT"), moonBase));
    EXPECT_TRUE(loaded->waitForTitles({"later"}, "2026-06-01T00:00:00Z"));
    EXPECT_TRUE(waitFor(
        [&] { return loaded->meetings("2026-06-01T00:00:00Z").at(0).start == at("2026-06-01T09:00:00Z"); }));
    // The server never finishes to expand this one.
    world->import("local", eventText("30 February", "20260101T090000Z",
                                     "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30\r\n"));
    world->import("local", eventText("after"));
    EXPECT_TRUE(loaded->waitForTitles({"after"}));
    openStore();
    EXPECT_TRUE(loaded->waitForTitles({"after"}));

    // It dies and comes back, hangs and is left.
    killServer();
    world->import("local", eventText("after", "20260310T090000Z", "STATUS:CANCELLED\r\n"));
    EXPECT_TRUE(loaded->waitForTitles({}));
    EXPECT_GE(world->signalAll(SIGSTOP), 2U);
    QElapsedTimer timer;
    timer.start();
    loaded->titles("2026-07-20T00:00:00Z");
    EXPECT_EQ(status(), AuthorizationStatus::fullAccess);
    loaded.reset();
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(EdsStoryTest, followsAnAccountOnTheNet)
{
    const auto guarded = [](const char *start, const std::string &more) {
        return eventText("Guarded", start, more + "ATTENDEE;PARTSTAT=ACCEPTED:mailto:ann@example.com\r\n");
    };
    server->put(guarded("20260310T090000Z", {}));
    testing::internal::CaptureStderr();
    openStore();
    std::string log;
    const auto isAsked = [&] {
        log += testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return log.find("\"Work\" is not signed in") != log.npos;
    };
    EXPECT_TRUE(waitFor(isAsked, LoadedStore::patience)) << log;
    testing::internal::GetCapturedStderr();
    const std::unique_ptr<ENamedParameters, decltype(&e_named_parameters_free)> password(
        e_named_parameters_new(), &e_named_parameters_free);
    e_named_parameters_set(password.get(), E_SOURCE_CREDENTIAL_USERNAME, "ann");
    e_named_parameters_set(password.get(), E_SOURCE_CREDENTIAL_PASSWORD, "secret");
    EXPECT_TRUE(
        e_source_invoke_authenticate_sync(world->source("net").get(), password.get(), nullptr, nullptr));
    ASSERT_TRUE(loaded->waitForTitles({"Guarded"}));
    EXPECT_EQ(loaded->meetings().at(0).participation, Participation::accepted);
    server->put(guarded("20260311T090000Z", "SEQUENCE:1\r\n"));
    EXPECT_TRUE(e_client_refresh_sync(E_CLIENT(world->client("net").get()), nullptr, nullptr));
    EXPECT_TRUE(loaded->waitForTitles({"Guarded"}, "2026-03-11T00:00:00Z"));
}

TEST_F(EdsStoryTest, subscribesToAddresses)
{
    using testing::HasSubstr;
    const std::string path = "/a%40b/hush%2F1.ics?key=x%26y";
    WebServer web;
    const std::tuple<const char *, const char *, std::string, const char *> rows[] = {
        {"/empty", "200 OK", "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n",
         "\tNo meetings this week\t"},
        {"/page", "200 OK", "<html>Sign in</html>", "is not a calendar"},
        {"/broken", "200 OK", eventText("cut off").substr(0, 120), "is not a calendar"},
        {"/secret", "401 Unauthorized", {}, "asks for a password"},
        {"/forbidden", "403 Forbidden", {}, "asks for a password"},
        {"/gone", "410 Gone", {}, "has no calendar"},
        {"/404", "404 Not Found", {}, "has no calendar"},
        {"/ill", "503 Unavailable", {}, "does not hand out"},
    };

    testing::internal::CaptureStderr();
    openStore();
    for (const auto &[place, status, text, expected] : rows) {
        web.answers[place] = {status, text};
        const std::string told = add(web.address(place));
        EXPECT_THAT(told, HasSubstr(expected)) << place;
        EXPECT_EQ(told.find(place), told.npos) << told;
        if (told.starts_with("desktop:")) {
            EXPECT_EQ(remove(told), "");
        }
    }
    EXPECT_THAT(add("ftp://127.0.0.1/x"), HasSubstr("not the address"));
    EXPECT_EQ(calendars(), "") << "nothing is left behind";

    web.answers[path] = {"200 OK", eventText("first")};
    const std::string added = add(web.address(path));
    EXPECT_THAT(added, HasSubstr("\t127.0.0.1\t127.0.0.1\tNo meetings this week\t#"));
    EXPECT_TRUE(loaded->waitForTitles({"first"}));
    web.answers[path].second = eventText("second");
    EXPECT_EQ(calendars(), added);
    EXPECT_TRUE(loaded->waitForTitles({"second"}));
    web.stop();
    EXPECT_THAT(calendars(), HasSubstr("can't be reached"));
    EXPECT_EQ(loaded->titles().size(), 1U) << "what is known stays";
    web.start();
    web.answers[path].second = eventText("third", "20260310T100000Z", "RRULE:FREQ=DAILY\r\n");
    EXPECT_THAT(calendars(), HasSubstr("7 meetings this week"));
    EXPECT_TRUE(loaded->waitForTitles({"third"}));

    const QString id = QString::fromStdString(added.substr(0, added.find('\t')));
    EXPECT_EQ(calendars({QStringLiteral("rename"), id, QStringLiteral("Team")}), "");
    EXPECT_THAT(remove("desktop:local"), HasSubstr("has not subscribed"));
    killServer();
    EXPECT_THAT(calendars(), HasSubstr("\tTeam\t")) << "it outlives the server";
    world->signalAll(SIGSTOP);
    EXPECT_THAT(calendars(), HasSubstr("does not answer"));
    world->signalAll(SIGCONT);
    EXPECT_EQ(remove(added), "");
    EXPECT_TRUE(loaded->waitForTitles({}));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log.find("hush"), log.npos) << log;
    EXPECT_THAT(log, testing::ContainsRegex("can't be fetched .(Not Found|Unavailable)"));
}

TEST_F(EdsStoryTest, readsServedCalendarsLikeFiles)
{
    const std::string samples = MIVORA_TEST_DATA "/calendars";
    const std::vector<std::string> addresses{"alex.moreno@example.com", "a.moreno@example.org"};
    const auto meetings = [](LoadedStore &of) {
        std::vector<std::string> texts;
        for (const auto &m : of.meetings("2026-03-01T00:00:00Z", 45))
            // Other tests have left meetings in other calendars.
            if (!m.calendarID.starts_with("desktop:") || isOwnSubscription(m.calendarID))
                texts.push_back(m.title + ' ' + std::to_string(secondsSinceEpoch(m.start)) + ' ' +
                                std::to_string(secondsSinceEpoch(m.end)) + ' ' +
                                std::to_string(int(m.participation)) + (m.isAllDay ? " whole" : "") + ' ' +
                                (m.joinLink ? m.joinLink->webURL.text() : ""));
        std::sort(texts.begin(), texts.end());
        return texts;
    };
    LoadedStore expected({samples}, addresses);
    openStore(addresses);
    WebServer web;
    int count = 0;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(samples)) {
        if (entry.path().extension() != ".ics")
            continue;
        std::ifstream file(entry.path());
        const std::string place = '/' + std::to_string(++count);
        web.answers[place] = {"200 OK", std::string(std::istreambuf_iterator<char>(file), {})};
        add(web.address(place));
    }
    EXPECT_TRUE(waitFor([&] { return meetings(expected).size() > 50; }));
    waitFor([&] { return meetings(*loaded) == meetings(expected); }, LoadedStore::patience);
    EXPECT_EQ(meetings(*loaded), meetings(expected));
}

} // namespace mivora
