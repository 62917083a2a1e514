#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/SparkleUpdater.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "PublishedUpdate.h"

#include <QJsonDocument>
#include <QSet>

namespace kelo {

namespace {

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

/// An updater of version 1.0 with the real plug-ins and the real window.
class UpdateRoadTests : public PublishedUpdate
{
protected:
    void SetUp() override
    {
        PublishedUpdate::SetUp();
        writeInfo(s_publisher->publicKey());
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
        host.downloadFolder = downloads();
        updater = std::make_unique<SparkleUpdater>(
            InformationDictionary::read(folder.filePath(QStringLiteral("info.json"))), host);
        return *updater;
    }

    UpdateWindow &window() { return updater->controller().window(); }

    /// Waits until the window no longer says that there is work, and gives its heading.
    std::string outcome()
    {
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return window().isVisible() && !window().isWorking(); }, 10'000));
        return window().heading().toStdString();
    }

    /// Until it is known that there is a new version, which is not yet downloaded.
    void reachTheOffer()
    {
        start().checkForUpdates();
        ASSERT_EQ(outcome(), "A new version of Mivora is available");
    }

    void reachTheInstaller()
    {
        reachTheOffer();
        window().pressPrimary();
        ASSERT_EQ(outcome(), "Mivora 1.1 is ready to install");
    }

    Appearance appearance{noBus};
    ViewLoader views{appearance};
    QStringList opened;
    bool canOpen = true;
    std::unique_ptr<SparkleUpdater> updater;
};

} // namespace

// The first of the tests: nothing has been loaded yet.
TEST_F(UpdateRoadTests, nothingIsLoadedOrSentBeforeACheck)
{
    start();
    QTest::qWait(300);
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
    QFile file(downloads() + packagePath);
    EXPECT_EQ(opened, QStringList(file.fileName()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), package);
    EXPECT_EQ(kept().size(), 1);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(UpdateRoadTests, withoutAnInstallerTheUserIsToldWhereThePackageIs)
{
    canOpen = false;
    reachTheInstaller();
    window().pressPrimary();
    EXPECT_EQ(outcome(), "The package is downloaded");
    EXPECT_TRUE(window().text().contains(opened.value(0)));
}

TEST_F(UpdateRoadTests, whatFailsIsSaidPlainlyAndCanBeTriedAgain)
{
    const std::pair<Answer, const char *> rows[] = {
        {{.body = QByteArray(package).replace("end", "bad")}, "The update was refused"},
        {{.status = 404}, "Couldn't download the update"}};

    reachTheOffer();
    for (const auto &[answer, heading] : rows) {
        server.answers[packagePath] = answer;
        window().pressPrimary();
        EXPECT_EQ(outcome(), heading);
        EXPECT_EQ(kept(), QStringList()) << heading;
        window().pressSecondary();
        EXPECT_EQ(outcome(), "A new version of Mivora is available");
    }
    EXPECT_EQ(opened, QStringList());
}

TEST_F(UpdateRoadTests, aPackageThatIsGoneIsNotOpened)
{
    reachTheInstaller();
    ASSERT_TRUE(QDir(downloads()).removeRecursively());
    window().pressPrimary();
    EXPECT_EQ(outcome(), "The package is gone");
    EXPECT_EQ(opened, QStringList());
}

TEST_F(UpdateRoadTests, theWindowGrowsWithItsText)
{
    start();
    window().show(lyingPage(QStringLiteral("/home")), Attention::taken);
    const int usual = window().window()->height();
    window().update(lyingPage(QString(600, QLatin1Char('w'))));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window().window()->height() > usual; }));
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
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.requests.size() > 1; }));
    updater->checkForUpdates();
    updater->controller().checkInBackground();
    EXPECT_EQ(window().heading(), QStringLiteral("Downloading Mivora 1.1…"));
    EXPECT_EQ(server.requests, QStringList({feedPath, packagePath}));
}

TEST_F(UpdateRoadTests, closingTheWindowOrQuittingEndsADownload)
{
    reachTheOffer();
    server.answers[packagePath] = {.head = "HTTP/1.1 200 OK\r\n\r\n",
                                   .endless = QByteArray(1000, 'p'),
                                   .pause = std::chrono::milliseconds(10)};
    for (const bool isQuit : {false, true}) {
        window().pressPrimary();
        EXPECT_TRUE(QTest::qWaitFor([this] { return window().progress() > 0; }));
        EXPECT_TRUE(window().isWorking());
        if (isQuit) {
            updater.reset();
        } else {
            window().window()->close();
            EXPECT_FALSE(window().isVisible());
        }
        QTest::qWait(100);
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
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return window().heading().startsWith(QLatin1String("A new")); }));
        EXPECT_FALSE(window().isVisible());
        EXPECT_EQ(server.requests.size(), checks);
    }
    updater.reset();
    shown.isEmpty() ? qunsetenv("MIVORA_VIEWS") : qputenv("MIVORA_VIEWS", shown);
}

TEST_F(UpdateRoadTests, whoeverAsksIsAnswered)
{
    publish(QStringLiteral("1.0"));
    start().controller().checkInBackground();
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "You're up to date");
    EXPECT_EQ(server.requests, QStringList(feedPath)) << "the check becomes the user's";
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
    QTest::qWait(200);
    EXPECT_EQ(server.requests, QStringList());
}

TEST_F(UpdateRoadTests, theBackgroundSpeaksOfEachNewVersionOnceAndOfNothingElse)
{
    const auto check = [this] {
        const auto before = server.requests.size();
        updater->controller().checkInBackground();
        EXPECT_TRUE(QTest::qWaitFor([&] { return server.requests.size() > before; }));
        const bool isTold = QTest::qWaitFor([this] { return window().isVisible(); }, 400);
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
