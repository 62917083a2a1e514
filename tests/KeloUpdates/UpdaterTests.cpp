#include "FeedServer.h"
#include "KeloUpdates/SparkleUpdater.h"
#include "support/SharedViews.h"

#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

namespace {

using std::chrono::minutes;
const QDateTime launch = QDateTime::fromString(QStringLiteral("2026-03-10T09:00:00Z"), Qt::ISODate);

/// An updater of version 1.0 with the real plug-ins and the real window, and a clock that is set by hand.
class UpdaterTests : public testing::Test
{
protected:
    void SetUp() override
    {
        server.trust();
        server.publishVersion("1.1");
        start();
    }

    void start() { start(server.publicKey()); }

    void start(const QJsonValue &key)
    {
        updater = std::make_unique<SparkleUpdater>(
            QJsonObject{{feedKey, server.address().toString()}, {publicKeyKey, key}},
            UpdaterHost{.views = mivora::sharedViews(),
                        .program = {QStringLiteral("Mivora"), QStringLiteral("1.0")},
                        .openPage = [this](const QString &url) { opened << url; },
                        .now = [this] { return now; },
                        .memoryPath = folder.filePath(QStringLiteral("state.json"))});
    }

    UpdateWindow &window() { return updater->controller().window(); }

    std::string heading() { return window().isVisible() ? window().page().heading.toStdString() : "none"; }

    /// Waits until the window no longer says that there is work, and gives its heading.
    std::string outcome()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !window().page().isWorking; }, 10'000));
        return heading();
    }

    /// Whether the program looks for updates by itself when it is `hours` later.
    bool looksAfter(qint64 hours)
    {
        now = now.addSecs(hours * 3600);
        updater->controller().tick();
        const bool looks = updater->controller().isChecking();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !updater->controller().isChecking(); }, 10'000));
        return looks;
    }

    FeedServer server;
    QTemporaryDir folder;
    QDateTime now = launch;
    QStringList opened;
    std::unique_ptr<SparkleUpdater> updater;
};

} // namespace

TEST(StartDecision, followsTheKeyOfTheInformationDictionary)
{
    for (const QJsonValue &key : {QJsonValue(), QJsonValue(QJsonValue::Undefined), QJsonValue(42)})
        EXPECT_FALSE(startsUpdater(key)) << key.type();
    for (const char *key : {"", "REPLACE", "REPLACE_ME"})
        EXPECT_FALSE(startsUpdater(QLatin1String(key))) << key;
    for (const char *key : {"replace_me", " REPLACE", "uTIbFFxQGGq6bEqCz0ekk9KXWu7Ygs2yWYF0ifPHmc0="})
        EXPECT_TRUE(startsUpdater(QLatin1String(key))) << key;
}

TEST_F(UpdaterTests, aUserIsLedFromTheCheckToThePage)
{
    EXPECT_TRUE(updater->canCheckForUpdates());
    updater->checkForUpdates();
    EXPECT_EQ(heading(), "Checking for updates…");
    EXPECT_EQ(outcome(), "A new version of Mivora is available");
    EXPECT_EQ(window().page().notes, QStringLiteral("<b>Faster</b>"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window().window()->height() > 220; })) << "no room";
    updater->checkForUpdates();
    EXPECT_EQ(heading(), "A new version of Mivora is available") << "is shown once more";
    EXPECT_EQ(opened, QStringList());
    window().pressPrimary();
    EXPECT_EQ(opened, QStringList(QStringLiteral("https://kelo.example/get")));
    EXPECT_EQ(heading(), "none");
    EXPECT_EQ(server.requests.size(), 2);
}

TEST_F(UpdaterTests, whoeverAsksIsAnsweredAndCanTryAgainOrGiveUp)
{
    server.publishVersion("1.0");
    // A check that began by itself becomes the user's.
    updater->controller().tick();
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "You're up to date");
    EXPECT_EQ(server.requests.size(), 2);

    server.answers["/feed"].status = 500;
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "Couldn't check for updates");
    server.publishVersion("1.1");
    window().pressSecondary();
    EXPECT_EQ(outcome(), "A new version of Mivora is available");
    window().pressSecondary();

    updater->checkForUpdates();
    window().window()->close();
    EXPECT_FALSE(updater->controller().isChecking());
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "A new version of Mivora is available");
}

TEST_F(UpdaterTests, aBuildWithoutAKeySaysSoAndAsksNobody)
{
    start(QStringLiteral("REPLACE_ME"));
    EXPECT_LT(updater->controller().untilTick().count(), 0);
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "No update feed configured");
    window().pressPrimary();
    EXPECT_FALSE(looksAfter(48));
}

TEST_F(UpdaterTests, looksOnceADayAndSpeaksOfEachNewVersionOnceAndOfNothingElse)
{
    EXPECT_GE(updater->controller().untilTick(), minutes(9));
    EXPECT_LE(updater->controller().untilTick(), minutes(63));
    server.answers["/feed"].status = 500;
    EXPECT_TRUE(looksAfter(1));
    EXPECT_EQ(heading(), "none");
    server.publishVersion("1.1");
    EXPECT_FALSE(looksAfter(23));
    EXPECT_TRUE(looksAfter(1));
    EXPECT_EQ(heading(), "A new version of Mivora is available");
    start();
    EXPECT_FALSE(looksAfter(0)) << "after a restart";
    EXPECT_TRUE(looksAfter(-400 * 24)) << "the clock was wrong before";
    EXPECT_EQ(heading(), "none") << "told of already";
    server.publishVersion("1.2");
    EXPECT_TRUE(looksAfter(25));
    EXPECT_EQ(heading(), "A new version of Mivora is available");
}

} // namespace kelo
