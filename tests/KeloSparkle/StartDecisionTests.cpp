#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/SparkleUpdater.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kelo {

TEST(StartDecisionTests, followsTheKeyOfTheInformationDictionary)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("info.json"));
    const QDBusConnection noBus(QStringLiteral("none"));
    Appearance appearance(noBus);
    ViewLoader views(appearance);
    const auto starts = [&] {
        SparkleUpdater updater(
            InformationDictionary::read(path),
            makeUpdaterHost(views, noBus, {QStringLiteral("Mivora"), QStringLiteral("1.0")}));
        EXPECT_TRUE(updater.canCheckForUpdates());
        return updater.controller().isStarted();
    };
    EXPECT_FALSE(starts()) << "without a file";

    const std::pair<const char *, bool> cases[] = {
        {"", false},
        {"SUPublicEDKey=abc", false},
        {R"({"SUFeedURL": "https://kelo.example/appcast.xml"})", false},
        {R"({"SUPublicEDKey": ""})", false},
        {R"({"SUPublicEDKey": 42})", false},
        {R"({"SUPublicEDKey": ["abc"]})", false},
        {R"({"SUPublicEDKey": null})", false},
        {R"({"SUPublicEDKey": "REPLACE_ME"})", false},
        {R"({"SUPublicEDKey": "REPLACE"})", false},
        {R"({"SUPublicEDKey": "replace_me"})", true},
        {R"({"SUPublicEDKey": " REPLACE"})", true},
        {R"({"SUPublicEDKey": "uTIbFFxQGGq6bEqCz0ekk9KXWu7Ygs2yWYF0ifPHmc0="})", true},
    };
    for (const auto &[info, isStarted] : cases) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(info);
        file.close();
        EXPECT_EQ(starts(), isStarted) << info;
    }
}

} // namespace kelo
