#include "KeloSparkle/engine/NetworkUpdateEngine.h"
#include "PublishedUpdate.h"

#include <QProcess>
#include <QTcpServer>
#include <QThreadPool>
#include <csignal>
#include <sys/resource.h>

namespace kelo {

namespace {

using std::chrono::milliseconds;

constexpr int asLongAsItTakes = 15'000;

EngineLimits limits(milliseconds silence, qint64 memory = FetchLimits().memory)
{
    return {.feed = {.bytes = 50'000, .silence = silence, .total = 2 * silence, .memory = memory},
            .package = {.silence = silence, .total = 2 * silence}};
}

template<typename Outcome> int faultOf(const Outcome &outcome)
{
    const auto *failure = std::get_if<UpdateFailure>(&outcome);
    return failure ? int(failure->fault) : -1;
}

struct Refused
{
    const char *name;
    Answer answer;
    UpdateFault expected;
};

class EngineTests : public PublishedUpdate
{
protected:
    void SetUp() override
    {
        PublishedUpdate::SetUp();
        feed = {.address = server.address(feedPath),
                .publicKey = s_publisher->publicKey(),
                .runningVersion = QStringLiteral("1.0")};
    }

    CheckOutcome check() { return check(engine); }

    CheckOutcome check(NetworkUpdateEngine &asked)
    {
        std::optional<CheckOutcome> outcome;
        asked.check(feed, [&](const CheckOutcome &result) { outcome = result; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, asLongAsItTakes));
        return outcome.value_or(CheckOutcome());
    }

    Update update()
    {
        const CheckOutcome outcome = check();
        EXPECT_TRUE(std::holds_alternative<Update>(outcome)) << faultOf(outcome);
        return std::holds_alternative<Update>(outcome) ? std::get<Update>(outcome) : Update();
    }

    DownloadOutcome download(const Update &update) { return download(update, engine); }

    DownloadOutcome download(const Update &update, NetworkUpdateEngine &asked)
    {
        std::optional<DownloadOutcome> outcome;
        asked.download(
            update, feed, downloads(), [](qint64) {}, [&](const auto &result) { outcome = result; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, asLongAsItTakes));
        return outcome.value_or(DownloadOutcome());
    }

    /// What is to time out needs no patience.
    NetworkUpdateEngine &engineFor(UpdateFault expected)
    {
        return expected == UpdateFault::timedOut ? impatient : engine;
    }

    UpdateFeed feed;
    NetworkUpdateEngine engine{limits(milliseconds(4000), 64 * 1024 * 1024)};
    NetworkUpdateEngine impatient{limits(milliseconds(250))};
};

} // namespace

TEST_F(EngineTests, aPackageThatIsNotTheSignedOneIsRefusedAndNotKept)
{
    const QByteArray ofUnknownLength = "HTTP/1.1 200 OK\r\n\r\n";
    const QByteArray ofGreatLength = "HTTP/1.1 200 OK\r\nContent-Length: 300003\r\n\r\n";
    QByteArray changed = package;
    changed[1000] = 'q';

    const Refused rows[] = {
        {"one byte changed", {.body = changed}, UpdateFault::wrongSignature},
        {"shorter", {.body = package.chopped(1)}, UpdateFault::wrongLength},
        {"empty", {}, UpdateFault::wrongLength},
        {"longer", {.body = package + "x"}, UpdateFault::wrongLength},
        {"longer at last", {.body = package + "x", .head = ofUnknownLength}, UpdateFault::wrongLength},
        {"shorter at last", {.body = package.left(1000), .head = ofUnknownLength}, UpdateFault::wrongLength},
        {"cut off", {.body = package.left(1000), .head = ofGreatLength}, UpdateFault::unreachable},
        {"gone", {.status = 404, .body = package}, UpdateFault::refusedByServer},
        {"a part only", {.status = 206, .body = package}, UpdateFault::refusedByServer},
        {"silent", {.isSilent = true}, UpdateFault::timedOut},
        {"moved to http", {.status = 302, .location = "http://localhost:1/m"}, UpdateFault::insecure},
    };

    const Update genuine = update();
    for (const auto &row : rows) {
        server.answers[packagePath] = row.answer;
        EXPECT_EQ(faultOf(download(genuine, engineFor(row.expected))), int(row.expected)) << row.name;
        EXPECT_EQ(kept(), QStringList()) << row.name;
    }

    server.answers[packagePath] = {.body = package};
    for (const char *key : {"foreign", "key"}) {
        Update other = genuine;
        const QByteArray signedContent = key == QByteArray("key") ? "another file" : package;
        other.signature = QByteArray::fromBase64(s_publisher->sign(signedContent, QString::fromLatin1(key)));
        EXPECT_EQ(faultOf(download(other)), int(UpdateFault::wrongSignature)) << key;
        EXPECT_EQ(kept(), QStringList()) << key;
    }
}

TEST_F(EngineTests, aFeedThatCantBeTrustedIsRefused)
{
    const QByteArray here = server.address(QStringLiteral("/loop")).toEncoded();
    const QByteArray piece(200'000, '1');
    const QByteArray started = "HTTP/1.1 200 OK\r\n";
    const QByteArray chunked = "Transfer-Encoding: chunked\r\n\r\n";
    const QByteArray redirect = "HTTP/1.1 302 Moved\r\nLocation: https://localhost:1/\r\n" + chunked;

    const Refused rows[] = {
        {"no feed", {.status = 404}, UpdateFault::refusedByServer},
        {"html", {.body = "<html/>"}, UpdateFault::malformedFeed},
        {"too large", {.body = QByteArray(60'000, ' ')}, UpdateFault::feedTooLarge},
        {"silent", {.isSilent = true}, UpdateFault::timedOut},
        {"moved to http", {.status = 301, .location = "http://localhost:1/"}, UpdateFault::insecure},
        {"moved to a file", {.status = 301, .location = "file:///etc/passwd"}, UpdateFault::insecure},
        {"moved for ever", {.status = 302, .location = here}, UpdateFault::refusedByServer},
        {"endless", {.head = started + "\r\n", .endless = piece}, UpdateFault::feedTooLarge},
        {"endless, said to be packed",
         {.head = started + "Content-Encoding: gzip\r\n\r\n", .endless = piece},
         UpdateFault::feedTooLarge},
        {"endless header", {.head = started + "X: ", .endless = piece}, UpdateFault::refusedByServer},
        {"endless redirect",
         {.head = redirect, .endless = "30D40\r\n" + piece + "\r\n"},
         UpdateFault::refusedByServer},
        {"endless chunk size", {.head = started + chunked, .endless = piece}, UpdateFault::refusedByServer},
        {"drops",
         {.head = started + "\r\n", .endless = "x", .pause = milliseconds(100)},
         UpdateFault::timedOut},
    };

    server.answers[QStringLiteral("/loop")] = {.status = 302, .location = here};
    for (const auto &row : rows) {
        server.answers[feedPath] = row.answer;
        EXPECT_EQ(faultOf(check(engineFor(row.expected))), int(row.expected)) << row.name;
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
    ASSERT_TRUE(QTest::qWaitFor([&] { return ending.has_value(); }, asLongAsItTakes));
    EXPECT_EQ(ending->fault, UpdateFault::cannotSave);
}

TEST_F(EngineTests, mayBeCancelledOrUsedAgainInItsAnswer)
{
    std::optional<CheckOutcome> outcome;
    engine.check(feed, [&](const CheckOutcome &) {
        engine.cancel();
        engine.check(feed, [&](const CheckOutcome &result) { outcome = result; });
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, asLongAsItTakes));
    EXPECT_TRUE(std::holds_alternative<Update>(outcome.value_or(CheckOutcome())));
}

TEST_F(EngineTests, redirectsWithinHttpsAreFollowed)
{
    server.answers[QStringLiteral("/moved.xml")] = server.answers[feedPath];
    server.answers[feedPath] = {.status = 301, .location = "/moved.xml"};
    EXPECT_EQ(update().version, QStringLiteral("1.1"));
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
        publish(QStringLiteral("9.9"));
        const int expected = row.isRefused ? int(UpdateFault::olderVersion) : -1;
        EXPECT_EQ(faultOf(download(update())), expected) << row.version;
        EXPECT_EQ(kept().isEmpty(), row.isRefused) << row.version;
    }
}

TEST_F(EngineTests, anEngineThatIsStoppedSaysNothingAndKeepsNothing)
{
    const Update found = update();
    // At any time: while it downloads, while it verifies.
    for (const int time : {0, 2, 5, 10, 20}) {
        bool isDone = false;
        {
            NetworkUpdateEngine brief;
            brief.download(
                found, feed, downloads(), [](qint64) {}, [&](const auto &) { isDone = true; });
            QTest::qWait(time);
        }
        QThreadPool::globalInstance()->waitForDone();
        EXPECT_EQ(kept().isEmpty(), !isDone) << time;
    }

    server.answers[packagePath] = {.isSilent = true};
    bool isDone = false;
    engine.download(
        found, feed, downloads(), [](qint64) {}, [&](const auto &) { isDone = true; });
    QTest::qWait(100);
    engine.cancel();
    EXPECT_EQ(kept(), QStringList());
    QTest::qWait(100);
    EXPECT_FALSE(isDone);
}

TEST_F(EngineTests, aFullDiskIsSaidAndNothingIsKept)
{
    const Update found = update();
    // Stands for a full disk: writes fail behind this size.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = ::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t room : {rlim_t(0), rlim_t(100'000), rlim_t(package.size() - 1)}) {
        const rlimit full{room, before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
        const DownloadOutcome result = download(found);
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
    ASSERT_TRUE(QFile::link(elsewhere, downloads()));
    EXPECT_EQ(faultOf(download(update())), -1);
    EXPECT_TRUE(letter.exists());
    EXPECT_EQ(kept().size(), 1);

    // A link with the name of the package, to a file that isn't there yet.
    const QString package = downloads() + QStringLiteral("/mivora_1.1_amd64.pkg");
    const QString trap = elsewhere + QStringLiteral("/trap");
    ASSERT_TRUE(QFile::remove(package) && QFile::link(trap, package));
    EXPECT_EQ(faultOf(download(update())), -1);
    EXPECT_FALSE(QFile::exists(trap));
    EXPECT_FALSE(QFileInfo(package).isSymLink());

    ASSERT_TRUE(QDir(downloads()).removeRecursively());
    ASSERT_TRUE(letter.rename(downloads()));
    EXPECT_EQ(faultOf(download(update())), int(UpdateFault::cannotSave)) << "a file is in its place";
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
