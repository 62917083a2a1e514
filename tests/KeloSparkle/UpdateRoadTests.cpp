#include "HttpsServer.h"
#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/SparkleUpdater.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "Publisher.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QSet>
#include <gtest/gtest.h>

namespace kelo {

namespace {

const QString feedPath = QStringLiteral("/appcast.xml");
const QString packagePath = QStringLiteral("/mivora_1.1_amd64.pkg");
const QDBusConnection noBus(QStringLiteral("none"));

/// Whether the plug-ins, or what only they need, are in the process.
QSet<QByteArray> loadedLibraries()
{
    QSet<QByteArray> found;
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (maps.open(QIODevice::ReadOnly)) {
        const QByteArray content = maps.readAll();
        for (const QByteArray name : {"mivora-updates.so", "mivora-views.so"}) {
            if (content.contains(name))
                found << name;
        }
    }
    return found;
}

/// An updater of version 1.0 with the real plug-ins and the real window, and a server with version 1.1.
class UpdateRoadTests : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_publisher = std::make_unique<Publisher>(); }

    static void TearDownTestSuite() { s_publisher.reset(); }

    void SetUp() override
    {
        s_publisher->trust();
        publish(QStringLiteral("1.1"));
        writeInfo(s_publisher->publicKey());
    }

    void publish(const QString &version)
    {
        const QByteArray feed = s_publisher->feed({.version = version,
                                                   .package = package,
                                                   .url = server.address(packagePath),
                                                   .notes = "<b>Faster</b>"});
        server.answers[feedPath] = {.body = feed};
        server.answers[packagePath] = {.body = package};
    }

    void writeInfo(const QString &key)
    {
        QFile file(folder.filePath(QStringLiteral("info.json")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            QJsonDocument(QJsonObject{{feedKey, server.address(feedPath).toString()}, {publicKeyKey, key}})
                .toJson());
    }

    SparkleUpdater &start() { return start(views); }

    SparkleUpdater &start(ViewLoader &loader)
    {
        UpdaterHost host = makeUpdaterHost(loader, noBus, {QStringLiteral("Mivora"), QStringLiteral("1.0")});
        host.open = [this](const QString &path, PackageOpened done) {
            opened << path;
            done(canOpen);
        };
        host.memoryPath = folder.filePath(QStringLiteral("updates.ini"));
        host.downloadFolder = folder.filePath(QStringLiteral("packages"));
        updater = std::make_unique<SparkleUpdater>(
            InformationDictionary::read(folder.filePath(QStringLiteral("info.json"))), host);
        return *updater;
    }

    UpdateWindow &window() { return updater->controller().window(); }

    /// Waits until the window no longer says that there is work, and gives its heading.
    std::string outcome()
    {
        wait([this] { return window().isVisible() && !window().isWorking(); });
        return window().heading().toStdString();
    }

    QStringList kept() const
    {
        return QDir(folder.filePath(QStringLiteral("packages"))).entryList(QDir::Files | QDir::Hidden);
    }

    /// Until it is known that there is a new version, which is not yet downloaded.
    void reachTheOffer()
    {
        start().checkForUpdates();
        ASSERT_EQ(outcome(), "A new version of Mivora is available");
    }

    static void wait(const std::function<bool()> &isOver, int milliseconds = 10'000)
    {
        QElapsedTimer timer;
        for (timer.start(); !isOver() && timer.elapsed() < milliseconds;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }

    static std::unique_ptr<Publisher> s_publisher;

    HttpsServer server{s_publisher->server()};
    QTemporaryDir folder;
    QByteArray package{QByteArray(2'000'000, 'p')};
    Appearance appearance{noBus};
    ViewLoader views{appearance};
    QStringList opened;
    bool canOpen = true;
    std::unique_ptr<SparkleUpdater> updater;
};

std::unique_ptr<Publisher> UpdateRoadTests::s_publisher;

} // namespace

// The first of the tests: nothing has been loaded yet.
TEST_F(UpdateRoadTests, nothingIsLoadedOrSentBeforeACheck)
{
    start();
    wait([] { return false; }, 300);
    EXPECT_EQ(loadedLibraries(), QSet<QByteArray>());
    EXPECT_EQ(server.requests, QStringList());
}

TEST_F(UpdateRoadTests, aUserIsLedFromTheCheckToTheInstaller)
{
    start().checkForUpdates();
    EXPECT_EQ(window().heading(), QStringLiteral("Checking for updates…"));
    EXPECT_EQ(window().window()->title(), QStringLiteral("Mivora"));
    EXPECT_EQ(outcome(), "A new version of Mivora is available");
    EXPECT_EQ(window().notes(), QStringLiteral("<b>Faster</b>"));
    EXPECT_EQ(server.requests, QStringList(feedPath)) << "nothing is downloaded unasked";

    window().pressPrimary();
    EXPECT_TRUE(window().isWorking());
    EXPECT_EQ(outcome(), "Mivora 1.1 is ready to install");
    EXPECT_EQ(opened, QStringList()) << "nothing is opened unasked";

    window().pressPrimary();
    const QString file = folder.filePath(QStringLiteral("packages/mivora_1.1_amd64.pkg"));
    EXPECT_EQ(opened, QStringList(file));
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_FALSE(window().isVisible());
}

TEST_F(UpdateRoadTests, withoutAnInstallerTheUserIsToldWhereThePackageIs)
{
    canOpen = false;
    start().checkForUpdates();
    outcome();
    window().pressPrimary();
    outcome();
    window().pressPrimary();
    EXPECT_EQ(outcome(), "The package is downloaded");
    EXPECT_TRUE(window().text().contains(opened.value(0)));
}

TEST_F(UpdateRoadTests, aRefusedPackageIsSaidPlainlyAndCanBeTriedAgain)
{
    server.answers[packagePath].body[7] = 'x';
    start().checkForUpdates();
    outcome();
    window().pressPrimary();
    EXPECT_EQ(outcome(), "The update was refused");
    EXPECT_EQ(kept(), QStringList());

    publish(QStringLiteral("1.1"));
    window().pressSecondary();
    EXPECT_EQ(outcome(), "A new version of Mivora is available");
    EXPECT_EQ(opened, QStringList());
}

TEST_F(UpdateRoadTests, whatFailsIsCalledByItsName)
{
    const struct
    {
        Answer answer;
        const char *heading;
    } rows[] = {
        {{.status = 404}, "Couldn't download the update"},
        {{.status = 302, .location = "http://localhost:1/"}, "Couldn't download the update"},
    };

    for (const auto &row : rows) {
        reachTheOffer();
        server.answers[packagePath] = row.answer;
        window().pressPrimary();
        EXPECT_EQ(outcome(), row.heading);
        EXPECT_EQ(kept(), QStringList()) << row.heading;
    }
    EXPECT_EQ(opened, QStringList());
}

TEST_F(UpdateRoadTests, aPackageThatIsGoneIsNotOpened)
{
    reachTheOffer();
    window().pressPrimary();
    EXPECT_EQ(outcome(), "Mivora 1.1 is ready to install");
    ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("packages"))).removeRecursively());
    window().pressPrimary();
    EXPECT_EQ(outcome(), "The package is gone");
    EXPECT_EQ(opened, QStringList());

    window().pressSecondary();
    EXPECT_EQ(outcome(), "A new version of Mivora is available");
}

TEST_F(UpdateRoadTests, theWindowGrowsWithItsText)
{
    start();
    window().show(lyingPage(QStringLiteral("/home")), Attention::taken);
    const int usual = window().window()->height();
    window().update(lyingPage(QString(600, QLatin1Char('w'))));
    wait([&] { return window().window()->height() > usual; });
    EXPECT_GT(window().window()->height(), usual);
}

TEST_F(UpdateRoadTests, whoeverAsksTwiceIsShownWhatIsGoingOn)
{
    start().checkForUpdates();
    updater->checkForUpdates();
    updater->controller().checkInBackground();
    outcome();
    updater->checkForUpdates();
    EXPECT_EQ(server.requests, QStringList(feedPath));

    server.answers[packagePath].isSilent = true;
    window().pressPrimary();
    wait([this] { return server.requests.size() > 1; });
    updater->checkForUpdates();
    updater->controller().checkInBackground();
    EXPECT_EQ(window().heading(), QStringLiteral("Downloading Mivora 1.1…"));
    EXPECT_EQ(server.requests, QStringList({feedPath, packagePath}));
}

TEST_F(UpdateRoadTests, aBackgroundCheckBecomesTheUsersWhenTheyAsk)
{
    publish(QStringLiteral("1.0"));
    start().controller().checkInBackground();
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "You're up to date");
    EXPECT_EQ(server.requests, QStringList(feedPath));
}

TEST_F(UpdateRoadTests, closingTheWindowOrQuittingEndsADownload)
{
    reachTheOffer();
    server.answers[packagePath] = {.head = "HTTP/1.1 200 OK\r\n\r\n",
                                   .endless = QByteArray(1000, 'p'),
                                   .pause = std::chrono::milliseconds(10)};
    for (const bool isQuit : {false, true}) {
        window().pressPrimary();
        wait([this] { return window().progress() > 0; });
        EXPECT_TRUE(window().isWorking());
        if (isQuit) {
            updater.reset();
        } else {
            window().window()->close();
            EXPECT_FALSE(window().isVisible());
        }
        wait([] { return false; }, 100);
        EXPECT_EQ(kept(), QStringList());
        if (!isQuit)
            reachTheOffer();
    }
}

TEST_F(UpdateRoadTests, withoutAWindowEachCheckStartsAnew)
{
    const auto shown = qgetenv("MIVORA_VIEWS");
    qputenv("MIVORA_VIEWS", "/nonexistent");
    ViewLoader none(appearance);
    start(none);
    for (int checks = 1; checks < 3; ++checks) {
        updater->checkForUpdates();
        wait([this] { return window().heading() == QStringLiteral("A new version of Mivora is available"); });
        EXPECT_FALSE(window().isVisible());
        EXPECT_EQ(server.requests.size(), checks);
    }
    updater.reset();
    shown.isEmpty() ? qunsetenv("MIVORA_VIEWS") : qputenv("MIVORA_VIEWS", shown);
}

TEST_F(UpdateRoadTests, whoeverAsksIsAnswered)
{
    publish(QStringLiteral("1.0"));
    start().checkForUpdates();
    EXPECT_EQ(outcome(), "You're up to date");
    window().pressPrimary();
    EXPECT_FALSE(window().isVisible());

    server.answers[feedPath].status = 500;
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "Couldn't check for updates");
    window().dismiss();

    server.answers[feedPath].isSilent = true;
    updater->checkForUpdates();
    window().dismiss();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(UpdateRoadTests, aBuildWithoutAKeySaysSoAndAsksNobody)
{
    writeInfo(QStringLiteral("REPLACE_ME"));
    start().checkForUpdates();
    EXPECT_EQ(outcome(), "No update feed configured");
    updater->controller().checkInBackground();
    wait([] { return false; }, 200);
    EXPECT_EQ(server.requests, QStringList());
}

TEST_F(UpdateRoadTests, theBackgroundSpeaksOfEachNewVersionOnceAndOfNothingElse)
{
    const auto check = [this] {
        const auto before = server.requests.size();
        updater->controller().checkInBackground();
        wait([&] { return server.requests.size() > before; });
        wait([this] { return window().isVisible(); }, 400);
        const bool isTold = window().isVisible();
        window().dismiss();
        return isTold;
    };
    start();
    server.answers[feedPath].status = 500;
    EXPECT_FALSE(check());
    publish(QStringLiteral("1.0"));
    EXPECT_FALSE(check());
    publish(QStringLiteral("1.1"));
    EXPECT_TRUE(check());
    EXPECT_FALSE(check());
    start();
    EXPECT_FALSE(check()) << "also after a restart";
    publish(QStringLiteral("1.2"));
    EXPECT_TRUE(check());
}

} // namespace kelo
