#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/SparkleUpdater.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kelo {

namespace {

struct Case
{
    const char *name;
    /// The file's content; null for no file.
    const char *info;
    bool starts;
};

const Case cases[] = {
    {"noFile", nullptr, false},
    {"emptyFile", "", false},
    {"noJson", "SUPublicEDKey=abc", false},
    {"noKey", R"({"SUFeedURL": "https://kelo.example/appcast.xml"})", false},
    {"emptyKey", R"({"SUPublicEDKey": ""})", false},
    {"number", R"({"SUPublicEDKey": 42})", false},
    {"list", R"({"SUPublicEDKey": ["abc"]})", false},
    {"null", R"({"SUPublicEDKey": null})", false},
    {"placeholder", R"({"SUPublicEDKey": "REPLACE_ME"})", false},
    {"barePlaceholder", R"({"SUPublicEDKey": "REPLACE"})", false},
    {"otherCase", R"({"SUPublicEDKey": "replace_me"})", true},
    {"placeholderInside", R"({"SUPublicEDKey": " REPLACE"})", true},
    {"key", R"({"SUPublicEDKey": "uTIbFFxQGGq6bEqCz0ekk9KXWu7Ygs2yWYF0ifPHmc0="})", true},
    {"anyText", R"({"SUPublicEDKey": "x"})", true},
};

class StartDecisionTests : public testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(StartDecisionTests, followsTheKeyOfTheInformationDictionary)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("info.json"));
    if (GetParam().info) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(GetParam().info);
    }
    const QDBusConnection noBus(QStringLiteral("none"));
    Appearance appearance(noBus);
    ViewLoader views(appearance);
    SparkleUpdater updater(InformationDictionary::read(path),
                           makeUpdaterHost(views, noBus, {QStringLiteral("Mivora"), QStringLiteral("1.0")}));

    EXPECT_EQ(updater.controller().isStarted(), GetParam().starts);
    EXPECT_TRUE(updater.canCheckForUpdates());
}

INSTANTIATE_TEST_SUITE_P(All, StartDecisionTests, testing::ValuesIn(cases),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace kelo
