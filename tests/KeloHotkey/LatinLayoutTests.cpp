#include "KeloHotkey/backends/LatinLayout.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(LatinLayout, givesWhatAKeyTypesOnTheActiveLayoutOrTheFirstLatinOneOrTheBuiltInOne)
{
    const struct
    {
        const char *names;
        std::uint32_t active;
        std::uint32_t virtualKey;
        const char *character;
        const char *symbol;
    } rows[] = {
        {"fr", 0, 12, "a", "a"},           {"ru", 0, 12, "q", "q"},
        {"ru,fr", 0, 12, "a", "a"},        {"us,fr", 1, 12, "a", "a"},
        {"us,fr", 2, 12, "q", "q"},        {"gr,il", 1, 12, "q", "q"},
        {"no such", 0, 12, "q", "q"},      {"fr", 0, 33, "^", "dead_circumflex"},
        {"de", 0, 41, "ö", "odiaeresis"},  {"us", 0, 83, "1", "KP_1"},
        {"us", 0, 67, "*", "KP_Multiply"}, {"us", 0, 36, "none", "Return"},
        {"us", 0, 76, "none", "KP_Enter"}, {"us", 0, 300, "none", ""},
    };

    for (const auto &row : rows) {
        const LatinLayout layout = LatinLayout::fromNames(row.names, row.active);
        EXPECT_EQ(layout.character(row.virtualKey).value_or(QStringLiteral("none")).toStdString(),
                  row.character)
            << row.names << ' ' << row.active << ' ' << row.virtualKey;
        EXPECT_EQ(layout.symbolName(row.virtualKey).toStdString(), row.symbol) << row.names;
    }
}
