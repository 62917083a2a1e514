#include "HttpsServer.h"
#include "KeloSparkle/engine/NetworkUpdateEngine.h"
#include "Publisher.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTcpServer>
#include <QThreadPool>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace kelo {

namespace {

using std::chrono::milliseconds;

const QString feedPath = QStringLiteral("/appcast.xml");
const QString packagePath = QStringLiteral("/mivora_1.1_amd64.pkg");

/// An engine with little patience, a server, and what is published on it: version 1.1.
class EngineTests : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_publisher = std::make_unique<Publisher>(); }

    static void TearDownTestSuite() { s_publisher.reset(); }

    void SetUp() override
    {
        s_publisher->trust();
        package = QByteArray(300'000, 'p') + "end";
        publish(
            s_publisher->feed({.package = package, .url = server.address(packagePath), .notes = "Faster"}));
        feed = {.address = server.address(feedPath),
                .publicKey = s_publisher->publicKey(),
                .runningVersion = QStringLiteral("1.0")};
    }

    void publish(const QByteArray &appcast)
    {
        server.answers[feedPath] = {.body = appcast};
        server.answers[packagePath] = {.body = package};
    }

    template<typename Outcome> static std::optional<Outcome> waitFor(const std::optional<Outcome> &outcome)
    {
        QElapsedTimer timer;
        for (timer.start(); !outcome && timer.elapsed() < 15'000;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return outcome;
    }

    CheckOutcome check() { return check(engine); }

    CheckOutcome check(NetworkUpdateEngine &asked)
    {
        std::optional<CheckOutcome> outcome;
        asked.check(feed, [&](const CheckOutcome &result) { outcome = result; });
        return waitFor(outcome).value_or(CheckOutcome());
    }

    DownloadOutcome download(const Update &update) { return download(update, engine); }

    DownloadOutcome download(const Update &update, NetworkUpdateEngine &asked)
    {
        std::optional<DownloadOutcome> outcome;
        received = 0;
        asked.download(
            update, feed, folderPath(), [&](qint64 bytes) { received = bytes; },
            [&](const DownloadOutcome &result) { outcome = result; });
        return waitFor(outcome).value_or(DownloadOutcome());
    }

    DownloadOutcome checkAndDownload() { return checkAndDownload(engine); }

    DownloadOutcome checkAndDownload(NetworkUpdateEngine &downloading)
    {
        const CheckOutcome outcome = check();
        const auto *update = std::get_if<Update>(&outcome);
        return update ? download(*update, downloading) : DownloadOutcome(QStringLiteral("no update"));
    }

    /// What is to time out needs no patience.
    NetworkUpdateEngine &engineFor(UpdateFault expected)
    {
        return expected == UpdateFault::timedOut ? impatient : engine;
    }

    template<typename Outcome> static int faultOf(const Outcome &outcome)
    {
        const auto *failure = std::get_if<UpdateFailure>(&outcome);
        return failure ? int(failure->fault) : -1;
    }

    static void pass(int time)
    {
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < time;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    QString folderPath() const { return folder.filePath(QStringLiteral("updates")); }

    QStringList kept() const { return QDir(folderPath()).entryList(QDir::Files | QDir::Hidden); }

    static std::unique_ptr<Publisher> s_publisher;

    HttpsServer server{s_publisher->server()};
    QTemporaryDir folder;
    QByteArray package;
    UpdateFeed feed;
    qint64 received = 0;
    NetworkUpdateEngine engine{
        {.feed = {.bytes = 50'000, .silence = milliseconds(1500), .total = milliseconds(3000)},
         .package = {.silence = milliseconds(1500), .total = milliseconds(3000)}}};
    NetworkUpdateEngine impatient{
        {.feed = {.bytes = 50'000, .silence = milliseconds(250), .total = milliseconds(500)},
         .package = {.silence = milliseconds(250), .total = milliseconds(500)}}};
};

std::unique_ptr<Publisher> EngineTests::s_publisher;

} // namespace

TEST_F(EngineTests, leadsFromTheFeedToAVerifiedFile)
{
    const CheckOutcome outcome = check();
    const auto *update = std::get_if<Update>(&outcome);
    ASSERT_TRUE(update) << faultOf(outcome);
    EXPECT_EQ(update->version, QStringLiteral("1.1"));
    EXPECT_EQ(update->notes, QStringLiteral("Faster"));
    EXPECT_EQ(update->length, package.size());

    const DownloadOutcome result = download(*update);
    ASSERT_TRUE(std::get_if<QString>(&result)) << faultOf(result);
    EXPECT_EQ(received, package.size());
    EXPECT_EQ(kept(), QStringList(QStringLiteral("mivora_1.1_amd64.pkg")));
    QFile file(std::get<QString>(result));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), package);
}

TEST_F(EngineTests, aPackageThatIsNotTheSignedOneIsRefusedAndNotKept)
{
    const QByteArray appcast = server.answers[feedPath].body;
    const QByteArray otherSignature = s_publisher->sign(package, QStringLiteral("foreign"));
    QByteArray changed = package;
    changed[1000] = 'q';

    const struct
    {
        const char *name;
        QByteArray appcast;
        Answer answer;
        UpdateFault expected;
    } rows[] = {
        {"one byte changed", appcast, {.body = changed}, UpdateFault::wrongSignature},
        {"foreign key",
         QByteArray(appcast).replace(s_publisher->sign(package), otherSignature),
         {.body = package},
         UpdateFault::wrongSignature},
        {"signature of another file",
         QByteArray(appcast).replace(s_publisher->sign(package), s_publisher->sign("x")),
         {.body = package},
         UpdateFault::wrongSignature},
        {"shorter", appcast, {.body = package.chopped(1)}, UpdateFault::wrongLength},
        {"empty", appcast, {}, UpdateFault::wrongLength},
        {"longer", appcast, {.body = package + "x"}, UpdateFault::wrongLength},
        {"longer, of unknown length",
         appcast,
         {.body = package + "x", .hidesLength = true},
         UpdateFault::wrongLength},
        {"shorter, of unknown length",
         appcast,
         {.body = package, .cutAfter = 1000, .hidesLength = true},
         UpdateFault::wrongLength},
        {"broken connection", appcast, {.body = package, .cutAfter = 1000}, UpdateFault::unreachable},
        {"gone", appcast, {.status = 404, .body = package}, UpdateFault::refusedByServer},
        {"a part only", appcast, {.status = 206, .body = package}, UpdateFault::refusedByServer},
        {"silent", appcast, {.isSilent = true}, UpdateFault::timedOut},
        {"redirect to http",
         appcast,
         {.status = 302, .location = "http://localhost:1/m"},
         UpdateFault::insecure},
    };

    for (const auto &row : rows) {
        publish(row.appcast);
        server.answers[packagePath] = row.answer;
        EXPECT_EQ(faultOf(checkAndDownload(engineFor(row.expected))), int(row.expected)) << row.name;
        EXPECT_EQ(kept(), QStringList()) << row.name;
    }
}

TEST_F(EngineTests, aFeedThatCantBeTrustedIsRefused)
{
    const QByteArray here = server.address(QStringLiteral("/loop")).toEncoded();

    const struct
    {
        const char *name;
        Answer answer;
        UpdateFault expected;
    } rows[] = {
        {"no feed", {.status = 404}, UpdateFault::refusedByServer},
        {"error", {.status = 500}, UpdateFault::refusedByServer},
        {"html", {.body = "<html/>"}, UpdateFault::malformedFeed},
        {"too large", {.body = QByteArray(60'000, ' ')}, UpdateFault::feedTooLarge},
        {"too large, of unknown length",
         {.body = QByteArray(60'000, ' '), .hidesLength = true},
         UpdateFault::feedTooLarge},
        {"silent", {.isSilent = true}, UpdateFault::timedOut},
        {"redirect to http",
         {.status = 301, .location = "http://localhost:1/appcast.xml"},
         UpdateFault::insecure},
        {"redirect to a file", {.status = 301, .location = "file:///etc/passwd"}, UpdateFault::insecure},
        {"redirects for ever", {.status = 302, .location = here}, UpdateFault::refusedByServer},
    };

    server.answers[QStringLiteral("/loop")] = {.status = 302, .location = here};
    for (const auto &row : rows) {
        server.answers[feedPath] = row.answer;
        EXPECT_EQ(faultOf(check(engineFor(row.expected))), int(row.expected)) << row.name;
    }
}

TEST_F(EngineTests, whateverEndsNeverEndsSoon)
{
    const QByteArray piece(200'000, '1');
    const QByteArray chunked = "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray chunk = "30D40\r\n" + piece + "\r\n";

    const struct
    {
        const char *name;
        Answer answer;
        UpdateFault expected;
    } rows[] = {
        {"body", {.head = "HTTP/1.1 200 OK\r\n\r\n", .endless = piece}, UpdateFault::feedTooLarge},
        {"body that says it is packed",
         {.head = "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n", .endless = piece},
         UpdateFault::feedTooLarge},
        {"header line", {.head = "HTTP/1.1 200 OK\r\nX: ", .endless = piece}, UpdateFault::refusedByServer},
        {"body of a redirect",
         {.head = "HTTP/1.1 302 Moved\r\nLocation: https://localhost:1/\r\n" + chunked, .endless = chunk},
         UpdateFault::refusedByServer},
        {"size of a chunk",
         {.head = "HTTP/1.1 200 OK\r\n" + chunked, .endless = piece},
         UpdateFault::refusedByServer},
        {"drops",
         {.head = "HTTP/1.1 200 OK\r\n\r\n", .endless = "x", .pause = milliseconds(100)},
         UpdateFault::timedOut},
    };

    NetworkUpdateEngine patient{{.feed = {.bytes = 50'000,
                                          .silence = milliseconds(8000),
                                          .total = milliseconds(8000),
                                          .memory = 64 * 1024 * 1024},
                                 .package = {}}};
    for (const auto &row : rows) {
        server.answers[feedPath] = row.answer;
        NetworkUpdateEngine &asked = row.expected == UpdateFault::timedOut ? impatient : patient;
        EXPECT_EQ(faultOf(check(asked)), int(row.expected)) << row.name;
    }
}

// Whoever hears of the end may delete everything, so Qt Network must not be at work with it any more.
TEST_F(EngineTests, aFetchEndsInTheEventLoopAndNotWithinQtNetwork)
{
    QNetworkAccessManager network;
    QObject context;
    bool hasReturned = false;
    std::optional<UpdateFailure> ending;
    const auto sink = [&](const QByteArray &) {
        QMetaObject::invokeMethod(
            &context, [&] { hasReturned = true; }, Qt::QueuedConnection);
        return false;
    };
    const HttpsFetch fetch(network, server.address(feedPath), {.bytes = 50'000}, sink,
                           [&](const auto &failure) {
                               EXPECT_TRUE(hasReturned);
                               ending = failure;
                           });
    ASSERT_TRUE(waitFor(ending));
    EXPECT_EQ(ending->fault, UpdateFault::cannotSave);
}

TEST_F(EngineTests, mayBeCancelledOrUsedAgainInItsAnswer)
{
    server.answers[feedPath] = {.head = "HTTP/1.1 200 OK\r\n\r\n", .endless = QByteArray(100'000, 'x')};
    std::optional<CheckOutcome> outcome;
    engine.check(feed, [&](const CheckOutcome &result) {
        engine.cancel();
        outcome = result;
    });
    EXPECT_EQ(faultOf(waitFor(outcome).value_or(CheckOutcome())), int(UpdateFault::feedTooLarge));

    publish(s_publisher->feed({.package = package, .url = server.address(packagePath)}));
    outcome.reset();
    engine.check(feed, [&](const CheckOutcome &) {
        engine.check(feed, [&](const CheckOutcome &result) { outcome = result; });
    });
    EXPECT_TRUE(std::holds_alternative<Update>(waitFor(outcome).value_or(CheckOutcome())));
}

TEST_F(EngineTests, redirectsWithinHttpsAreFollowed)
{
    server.answers[QStringLiteral("/moved.xml")] = server.answers[feedPath];
    server.answers[feedPath] = {.status = 301, .location = "/moved.xml"};
    EXPECT_TRUE(std::holds_alternative<Update>(check()));
}

TEST_F(EngineTests, serversThatProveNothingAreNotAsked)
{
    Publisher().trust();
    EXPECT_EQ(faultOf(check()), int(UpdateFault::untrustedServer));
    s_publisher->trust();
    // The certificate is that of "localhost".
    feed.address.setHost(QStringLiteral("127.0.0.1"));
    EXPECT_EQ(faultOf(check()), int(UpdateFault::untrustedServer));
    EXPECT_EQ(server.requests, QStringList());
}

TEST_F(EngineTests, nothingIsSentWithoutAKeyOrWithoutHttps)
{
    const UpdateFeed good = feed;
    feed.publicKey = QStringLiteral("not a key");
    EXPECT_EQ(faultOf(check()), int(UpdateFault::unusableKey));
    feed = good;
    feed.address.setScheme(QStringLiteral("http"));
    EXPECT_EQ(faultOf(check()), int(UpdateFault::insecure));
    EXPECT_EQ(server.requests, QStringList());

    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    feed = good;
    feed.address.setPort(closed.serverPort());
    closed.close();
    EXPECT_EQ(faultOf(check()), int(UpdateFault::unreachable));
}

TEST_F(EngineTests, aGenuineOldPackageUnderANewNameIsRefused)
{
    const QString root = folder.filePath(QStringLiteral("deb"));
    ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/DEBIAN")));
    const auto build = [&](const QByteArray &version) {
        QFile control(root + QStringLiteral("/DEBIAN/control"));
        EXPECT_TRUE(control.open(QIODevice::WriteOnly));
        control.write("Package: mivora\nVersion: " + version +
                      "\nArchitecture: all\nMaintainer: K <k@kelo.example>\nDescription: d\n");
        control.close();
        const QString path = folder.filePath(QStringLiteral("m.deb"));
        QProcess::execute(QStringLiteral("dpkg-deb"), {QStringLiteral("-b"), root, path});
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };

    const struct
    {
        const char *version;
        bool isRefused;
    } rows[] = {{"0.9-1", true}, {"1.0-1", true}, {"1:1.0-3", true}, {"1.1-1", false}, {"1:1.1", false}};

    for (const auto &row : rows) {
        package = build(row.version);
        publish(s_publisher->feed(
            {.version = QStringLiteral("9.9"), .package = package, .url = server.address(packagePath)}));
        const int expected = row.isRefused ? int(UpdateFault::olderVersion) : -1;
        EXPECT_EQ(faultOf(checkAndDownload()), expected) << row.version;
        EXPECT_EQ(kept().isEmpty(), row.isRefused) << row.version;
    }
}

TEST_F(EngineTests, aCancelledDownloadSaysNothingAndKeepsNothing)
{
    const CheckOutcome outcome = check();
    server.answers[packagePath] = {.isSilent = true};
    bool isDone = false;
    engine.download(
        std::get<Update>(outcome), feed, folderPath(), [](qint64) {}, [&](const auto &) { isDone = true; });
    pass(100);
    engine.cancel();
    EXPECT_EQ(kept(), QStringList());
    pass(100);
    EXPECT_FALSE(isDone);
}

TEST_F(EngineTests, anEngineThatGoesKeepsNothing)
{
    const CheckOutcome outcome = check();
    // At any time: while it downloads, while it verifies.
    for (const int time : {0, 2, 5, 10, 20}) {
        bool isDone = false;
        {
            NetworkUpdateEngine brief;
            brief.download(
                std::get<Update>(outcome), feed, folderPath(), [](qint64) {},
                [&](const auto &) { isDone = true; });
            pass(time);
        }
        QThreadPool::globalInstance()->waitForDone();
        EXPECT_EQ(kept().isEmpty(), !isDone) << time;
    }
}

TEST_F(EngineTests, aFullDiskIsSaidAndNothingIsKept)
{
    const CheckOutcome outcome = check();
    // Stands for a full disk: writes fail behind this size.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t room : {rlim_t(0), rlim_t(100'000), rlim_t(package.size() - 1)}) {
        const rlimit full{room, before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
        const DownloadOutcome result = download(std::get<Update>(outcome));
        ::setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_EQ(faultOf(result), int(UpdateFault::cannotSave)) << room;
        EXPECT_EQ(kept(), QStringList()) << room;
    }
    ::signal(SIGXFSZ, handler);
}

TEST_F(EngineTests, theFolderIsItsOwnWhateverStoodThere)
{
    const QString elsewhere = folder.filePath(QStringLiteral("documents"));
    ASSERT_TRUE(QDir().mkpath(elsewhere));
    QFile letter(elsewhere + QStringLiteral("/letter"));
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile::link(elsewhere, folderPath()));
    EXPECT_EQ(faultOf(checkAndDownload()), -1);
    EXPECT_TRUE(letter.exists());
    EXPECT_EQ(kept().size(), 1);

    // A link with the name of the package, to a file that isn't there yet.
    const QString package = folderPath() + QStringLiteral("/mivora_1.1_amd64.pkg");
    const QString trap = elsewhere + QStringLiteral("/trap");
    ASSERT_TRUE(QFile::remove(package) && QFile::link(trap, package));
    EXPECT_EQ(faultOf(checkAndDownload()), -1);
    EXPECT_FALSE(QFile::exists(trap));
    EXPECT_FALSE(QFileInfo(package).isSymLink());

    ASSERT_TRUE(QDir(folderPath()).removeRecursively());
    ASSERT_TRUE(letter.rename(folderPath()));
    EXPECT_EQ(faultOf(checkAndDownload()), int(UpdateFault::cannotSave)) << "a file is in its place";
}

TEST_F(EngineTests, packagesHaveHarmlessNames)
{
    const struct
    {
        const char *url;
        const char *expected;
    } rows[] = {
        {"https://k.example/a/mivora_1.1_amd64.deb?x=1", "mivora_1.1_amd64.deb"},
        {"https://k.example/", "update-1.1"},
        {"https://k.example/.bashrc", "update-1.1"},
        {"https://k.example/a%2F..%2Fb", "b"},
        {"https://k.example/..", "update-1.1"},
        {"https://k.example/a b", "update-1.1"},
        {"https://k.example/m.deb%0A", "update-1.1"},
        {"https://k.example/m.deb%00", "update-1.1"},
        {"https://k.example/-rf", "update-1.1"},
        {"https://k.example/m%E2%80%AEbed.sh", "update-1.1"},
    };

    for (const auto &row : rows) {
        const Update update{.version = QStringLiteral("1.1"), .url = QUrl(QString::fromLatin1(row.url))};
        EXPECT_EQ(packageFileName(update).toStdString(), row.expected) << row.url;
    }
    EXPECT_EQ(packageFileName({.version = QStringLiteral("1/../2")}).toStdString(), "update-1_.._2");
}

} // namespace kelo
