#include "KeloUpdates/SparkleUpdater.h"
#include "support/SharedViews.h"

#include <QFile>
#include <QHash>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

namespace kelo {

namespace {

struct Answer
{
    int status = 200;
    QByteArray body = {};
    QByteArray header = {};
};

/// A publisher of updates with a web server that proves to be "localhost"; keys and signatures are made as
/// docs/releasing.md tells maintainers to.
class FeedServer final : public QSslServer
{
public:
    FeedServer()
    {
        openssl(
            "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost "
            "-addext subjectAltName=DNS:localhost -keyout tls.key -out tls.pem");
        openssl("genpkey -algorithm ed25519 -out key.pem");
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate());
        configuration.setPrivateKey(QSslKey(openssl("pkey -in tls.key"), QSsl::Ec));
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        setSslConfiguration(configuration);
        connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
            while (QTcpSocket *socket = nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
        });
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
    }

    /// Lets this process trust the server's certificate, and only it.
    void trust() const
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates({certificate()});
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    /// The https address of the feed.
    QUrl address() const { return QUrl(QStringLiteral("https://localhost:%1/feed").arg(serverPort())); }

    QString publicKey() const
    {
        return QString::fromLatin1(openssl("pkey -in key.pem -pubout -outform DER").right(32).toBase64());
    }

    QByteArray sign(const QByteArray &document) const
    {
        QFile file(m_folder.filePath(QStringLiteral("document")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(document) == document.size());
        file.close();
        return openssl("pkeyutl -sign -rawin -inkey key.pem -in document");
    }

    /// Answers with the document and its signature.
    void publish(const QByteArray &document)
    {
        answers = {{"/feed", {.body = document}}, {"/feed.sig", {.body = sign(document)}}};
    }

    void publishVersion(const QByteArray &version)
    {
        publish("{\"version\": \"" + version +
                "\", \"date\": \"2026-12-24\", \"notes\": \"<b>Faster</b>\", \"page\": "
                "\"https://kelo.example/get\"}");
    }

    QHash<QByteArray, Answer> answers;
    /// The paths asked for so far.
    QList<QByteArray> requests;

private:
    QByteArray openssl(const char *arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral("openssl"), QString::fromLatin1(arguments).split(QLatin1Char(' ')));
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << arguments;
        return process.readAllStandardOutput();
    }

    QSslCertificate certificate() const { return QSslCertificate(openssl("x509 -in tls.pem")); }

    void answer(QTcpSocket &socket)
    {
        requests << socket.readAll().split(' ').value(1);
        const Answer answer = answers.value(requests.last(), Answer{.status = 404});
        socket.write("HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n" +
                     answer.header + "\r\n" + answer.body);
        socket.disconnectFromHost();
    }

    QTemporaryDir m_folder;
};

constexpr char offer[] = "A new version of Mivora is available";

/// An updater of version 1.9 with the real plug-ins and the real window, and a clock that is set by hand.
class UpdatesTest : public testing::Test
{
protected:
    UpdatesTest()
    {
        server.trust();
        server.publishVersion("1.10");
        start(feed.publicKey);
    }

    void start(const QString &key)
    {
        updater = std::make_unique<SparkleUpdater>(
            QJsonObject{{feedKey, feed.address.toString()}, {publicKeyKey, key}},
            UpdaterHost{.views = mivora::sharedViews(),
                        .program = {QStringLiteral("Mivora"), feed.runningVersion},
                        .openPage = [this](const QString &url) { opened << url; },
                        .now = [this] { return now; },
                        .memoryPath = folder.filePath(QStringLiteral("state.json"))});
    }

    /// What comes of a check: a fault, or the version that is offered.
    std::string check(const UpdateFeed &asked)
    {
        std::optional<CheckOutcome> outcome;
        checker->check(asked, [&](const CheckOutcome &what) { outcome = what; });
        EXPECT_FALSE(outcome) << "not before check() returns";
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, 10'000));
        constexpr const char *faults[] = {"incomplete", "unusable",    "unreachable", "untrusted",
                                          "refused",    "not genuine", "malformed"};
        if (const auto *fault = std::get_if<UpdateFault>(&*outcome))
            return faults[int(*fault)];
        update = std::holds_alternative<Update>(*outcome) ? std::get<Update>(*outcome) : Update();
        return update.version.isNull() ? "none" : update.version.toStdString();
    }

    UpdateWindow &window() { return updater->controller().window(); }

    /// The window's heading once it doesn't say any more that there is work; "none" when there is no window.
    std::string outcome()
    {
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return !updater->controller().isChecking() && !window().page().isWorking; }, 10'000));
        return window().isVisible() ? window().page().heading.toStdString() : "none";
    }

    /// What the program says by itself when it is `hours` later; "idle" when it doesn't look for updates.
    std::string saysAfter(qint64 hours)
    {
        now = now.addSecs(hours * 3600);
        updater->controller().tick();
        return updater->controller().isChecking() ? outcome() : "idle";
    }

    FeedServer server;
    UpdateFeed feed{server.address(), server.publicKey(), QStringLiteral("1.9")};
    Update update;
    mivora::PluginFile plugin{"mivora-updates", "MIVORA_UPDATES"};
    UpdateChecker *checker = plugin.get<UpdateChecker>();
    QTemporaryDir folder;
    QDateTime now = QDateTime::fromString(QStringLiteral("2026-03-10T09:00:00Z"), Qt::ISODate);
    QStringList opened;
    std::unique_ptr<SparkleUpdater> updater;
};

} // namespace

TEST_F(UpdatesTest, aGenuineFeedIsReadWhole)
{
    for (const auto &[running, expected] :
         {std::pair("1.10", "none"), {"1.10.0", "none"}, {"2", "none"}, {"1.9", "1.10"}}) {
        feed.runningVersion = QLatin1String(running);
        EXPECT_EQ(check(feed), expected) << running;
    }
    EXPECT_EQ(update.date, QDate(2026, 12, 24));
    EXPECT_EQ(update.notes, QStringLiteral("<b>Faster</b>"));
    EXPECT_EQ(update.page, QStringLiteral("https://kelo.example/get"));
    checker->check(feed, [](const CheckOutcome &) { ADD_FAILURE() << "cancelled"; });
    checker->cancel();
    checker->check(feed, [](const CheckOutcome &) { ADD_FAILURE() << "superseded"; });
    EXPECT_EQ(check(feed), "1.10");
}

TEST_F(UpdatesTest, nothingIsBelievedThatThePublisherDidNotSign)
{
    const QByteArray document = server.answers["/feed"].body;
    const QByteArray signature = server.answers["/feed.sig"].body;
    const std::tuple<QByteArray, Answer, const char *> rows[] = {
        {QByteArray(document).replace("1.10", "1.11"), {.body = signature}, "not genuine"},
        {document, {.body = FeedServer().sign(document)}, "not genuine"},
        {document, {.body = signature.chopped(1)}, "not genuine"},
        {document, {.body = signature + '\n'}, "refused"},
        {document, {.status = 404, .body = signature}, "refused"},
    };
    for (const auto &[sent, answer, expected] : rows) {
        server.answers = {{"/feed", {.body = sent}}, {"/feed.sig", answer}};
        EXPECT_EQ(check(feed), expected) << sent.constData() << answer.body.size();
    }
    for (const auto &[from, to] : {std::pair("{", "["),
                                   {"1.10", ""},
                                   {"1.10", "1.10-rc1"},
                                   {"2026-12-24", "soon"},
                                   {"https://", "http://"},
                                   {"https://kelo.example/get", "https:///get"}}) {
        server.publish(QByteArray(document).replace(from, to));
        EXPECT_EQ(check(feed), "malformed") << to;
    }
}

TEST_F(UpdatesTest, aServerIsGivenLittleTrustAndLittleRoom)
{
    const QByteArray document = server.answers["/feed"].body;
    const QByteArray longest = document.leftJustified(64 * 1024, ' ');
    server.publish(longest);
    EXPECT_EQ(check(feed), "1.10");
    for (const Answer &answer :
         {Answer{.status = 500, .body = document}, Answer{.status = 302, .header = "Location: /feed.sig\r\n"},
          Answer{.body = longest + ' '}}) {
        server.answers["/feed"] = answer;
        EXPECT_EQ(check(feed), "refused") << answer.status << ' ' << answer.body.size();
    }

    server.requests.clear();
    UpdateFeed unusable = feed;
    unusable.address.setScheme(QStringLiteral("http"));
    EXPECT_EQ(check(unusable), "unusable");
    unusable = {feed.address, QStringLiteral("YWJj"), feed.runningVersion};
    EXPECT_EQ(check(unusable), "unusable");
    FeedServer().trust();
    EXPECT_EQ(check(feed), "untrusted");
    EXPECT_TRUE(server.requests.isEmpty());
    server.close();
    EXPECT_EQ(check(feed), "unreachable");
}

TEST_F(UpdatesTest, whoeverAsksIsLedFromTheCheckToThePage)
{
    EXPECT_TRUE(updater->canCheckForUpdates());
    updater->checkForUpdates();
    EXPECT_EQ(window().page().heading, QStringLiteral("Checking for updates…"));
    EXPECT_EQ(outcome(), offer);
    EXPECT_EQ(window().page().notes, QStringLiteral("<b>Faster</b>"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().window()->height() > 220; })) << "no room";
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), offer) << "is shown once more";
    window().pressPrimary();
    EXPECT_EQ(opened.join(u' '), QStringLiteral("https://kelo.example/get"));
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(server.requests.size(), 2);
}

TEST_F(UpdatesTest, whoeverAsksIsAnsweredAndCanTryAgainOrGiveUp)
{
    server.publishVersion("1.9");
    // A check that began by itself becomes the user's.
    updater->controller().tick();
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "You're up to date");
    EXPECT_EQ(server.requests.size(), 2);

    server.answers["/feed"].status = 500;
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "Couldn't check for updates");
    server.publishVersion("1.10");
    window().pressSecondary();
    EXPECT_EQ(outcome(), offer);
    window().pressSecondary();

    updater->checkForUpdates();
    window().window()->close();
    EXPECT_FALSE(updater->controller().isChecking());
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), offer);

    EXPECT_FALSE(startsUpdater(QJsonValue()));
    start(QStringLiteral("REPLACE_ME"));
    EXPECT_LT(updater->controller().untilTick().count(), 0);
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "No update feed configured");
    window().pressPrimary();
    EXPECT_EQ(saysAfter(48), "idle");
}

TEST_F(UpdatesTest, looksOnceADayAndSpeaksOfEachNewVersionOnceAndOfNothingElse)
{
    EXPECT_GE(updater->controller().untilTick(), std::chrono::minutes(9));
    EXPECT_LE(updater->controller().untilTick(), std::chrono::minutes(63));
    server.answers["/feed"].status = 500;
    EXPECT_EQ(saysAfter(1), "none");
    server.publishVersion("1.10");
    EXPECT_EQ(saysAfter(23), "idle");
    EXPECT_EQ(saysAfter(1), offer);
    start(feed.publicKey);
    EXPECT_EQ(saysAfter(0), "idle") << "after a restart";
    EXPECT_EQ(saysAfter(-400 * 24), "none") << "the clock was wrong before; told of already";
    server.publishVersion("1.11");
    EXPECT_EQ(saysAfter(25), offer);
}

} // namespace kelo
