#include "FeedServer.h"
#include "KeloUpdates/SparkleUpdater.h"
#include "support/SharedViews.h"

#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

namespace {

using std::chrono::minutes;

constexpr char offer[] = "A new version of Mivora is available";

/// An updater of version 1.0 with the real plug-ins and the real window, and a clock that is set by hand.
class UpdaterTests : public testing::Test
{
protected:
    UpdaterTests()
    {
        server.trust();
        server.publishVersion("1.1");
        start(server.publicKey());
    }

    void start(const QString &key)
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
    QTemporaryDir folder;
    QDateTime now = QDateTime::fromString(QStringLiteral("2026-03-10T09:00:00Z"), Qt::ISODate);
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

TEST_F(UpdaterTests, whoeverAsksIsLedFromTheCheckToThePage)
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
    EXPECT_EQ(outcome(), offer);
    window().pressSecondary();

    updater->checkForUpdates();
    window().window()->close();
    EXPECT_FALSE(updater->controller().isChecking());
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), offer);

    start(QStringLiteral("REPLACE_ME"));
    EXPECT_LT(updater->controller().untilTick().count(), 0);
    updater->checkForUpdates();
    EXPECT_EQ(outcome(), "No update feed configured");
    window().pressPrimary();
    EXPECT_EQ(saysAfter(48), "idle");
}

TEST_F(UpdaterTests, looksOnceADayAndSpeaksOfEachNewVersionOnceAndOfNothingElse)
{
    EXPECT_GE(updater->controller().untilTick(), minutes(9));
    EXPECT_LE(updater->controller().untilTick(), minutes(63));
    server.answers["/feed"].status = 500;
    EXPECT_EQ(saysAfter(1), "none");
    server.publishVersion("1.1");
    EXPECT_EQ(saysAfter(23), "idle");
    EXPECT_EQ(saysAfter(1), offer);
    start(server.publicKey());
    EXPECT_EQ(saysAfter(0), "idle") << "after a restart";
    EXPECT_EQ(saysAfter(-400 * 24), "none") << "the clock was wrong before; told of already";
    server.publishVersion("1.2");
    EXPECT_EQ(saysAfter(25), offer);
}

} // namespace kelo
