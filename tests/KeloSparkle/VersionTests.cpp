#include "KeloSparkle/engine/Version.h"

#include <gtest/gtest.h>

namespace kelo {

namespace {

Version version(const char *text)
{
    const auto parsed = Version::parse(QString::fromUtf8(text));
    EXPECT_TRUE(parsed) << text;
    return parsed.value_or(Version());
}

// Every row is older than the next one; texts of a row are the same version.
const std::vector<std::vector<const char *>> inOrder{
    {"0.9-nightly", "0.9nightly"},
    {"0.9"},
    {"1.0-dev"},
    {"1.0a1", "1.0-alpha.1", "1.0~alpha1", "1.0 Alpha 1"},
    {"1.0-alpha.2"},
    {"1.0b2", "1.0-beta.2"},
    {"1.0b10"},
    {"1.0-pre1"},
    {"1.0rc", "1.0-rc"},
    {"1.0rc1", "1.0-RC1", "1.0~rc1", "v1.0rc.1"},
    {"1", "1.0", "v1.0", "V1.0.0", "version 1.0", "01.00", " 1.0 ", "1.0+build.7", "1.0 (4711)"},
    {"1.0p1"},
    {"1.0p2"},
    {"1.0-1"},
    {"1.0.1b1"},
    {"1.0.1"},
    {"1.0.9"},
    {"1.0.10"},
    {"1.2.3.4"},
    {"1.10"},
    {"1.10.1", "1.10.1.0"},
    {"9.2p1"},
    {"22.08.3"},
    {"2024-06-01"},
    {"2024.06.2"},
    {"20240601"},
    {"20240601123456789012345678901234567890"},
    {"20240601123456789012345678901234567891"},
};

} // namespace

TEST(VersionTests, realVersionsAreInTheOrderOfTheirRelease)
{
    for (std::size_t i = 0; i < inOrder.size(); ++i) {
        for (const char *a : inOrder[i]) {
            for (const char *same : inOrder[i])
                EXPECT_EQ(version(a), version(same)) << a << " and " << same;
            for (std::size_t j = i + 1; j < inOrder.size(); ++j) {
                for (const char *b : inOrder[j]) {
                    EXPECT_LT(version(a), version(b)) << a << " and " << b;
                    EXPECT_GT(version(b), version(a)) << b << " and " << a;
                }
            }
        }
    }
}

TEST(VersionTests, whatHasNoNumberOrNoEndIsNoVersion)
{
    for (const QString &text :
         {QString(), QStringLiteral("latest"), QStringLiteral("v"), QStringLiteral("+12"),
          QStringLiteral("(12)"), QStringLiteral("1.").repeated(60)})
        EXPECT_FALSE(Version::parse(text)) << text.toStdString();
}

} // namespace kelo
