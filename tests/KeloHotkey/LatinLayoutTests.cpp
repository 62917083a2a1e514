#include "KeloHotkey/backends/LatinLayout.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(LatinLayout, isTheActiveOneOrTheFirstOrTheBuiltInOne)
{
    const struct
    {
        const char *names;
        std::uint32_t active;
        char16_t typedByQ;
    } cases[] = {
        {"us", 0, u'q'},    {"fr", 0, u'a'},    {"ru", 0, u'q'},    {"ru,fr", 0, u'a'}, {"ru,fr", 1, u'a'},
        {"us,fr", 1, u'a'}, {"us,fr", 7, u'q'}, {"gr,il", 1, u'q'}, {"no such", 0, u'q'},
    };

    for (const auto &row : cases)
        EXPECT_EQ(LatinLayout::fromNames(row.names, row.active).character(12), QString(QChar(row.typedByQ)))
            << row.names << ' ' << row.active;
}

TEST(LatinLayout, givesWhatAKeyTypes)
{
    const struct
    {
        const char *names;
        std::uint32_t virtualKey;
        std::optional<QString> character;
        QString symbol;
    } cases[] = {
        {"fr", 33, QStringLiteral("^"), QStringLiteral("dead_circumflex")},
        {"de", 24, QStringLiteral("´"), QStringLiteral("dead_acute")},
        {"de", 41, QStringLiteral("ö"), QStringLiteral("odiaeresis")},
        {"us", 33, QStringLiteral("["), QStringLiteral("bracketleft")},
        {"us", 83, QStringLiteral("1"), QStringLiteral("KP_1")},
        {"us", 36, std::nullopt, QStringLiteral("Return")},
        {"us", 76, std::nullopt, QStringLiteral("KP_Enter")},
        {"us", 300, std::nullopt, QString()},
    };

    for (const auto &row : cases) {
        const LatinLayout layout = LatinLayout::fromNames(row.names);
        EXPECT_EQ(layout.character(row.virtualKey), row.character) << row.names << ' ' << row.virtualKey;
        EXPECT_EQ(layout.symbolName(row.virtualKey), row.symbol) << row.names << ' ' << row.virtualKey;
    }
}
