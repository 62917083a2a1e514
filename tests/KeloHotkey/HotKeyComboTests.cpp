#include "KeloHotkey/HotKeyCombo.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(HotKeyCombo, isReadFromItsStoredFormOnly)
{
    const struct
    {
        const char *json;
        std::optional<HotKeyCombo> combo;
    } cases[] = {
        {R"({"keyCode":9,"modifiers":768})", HotKeyCombo::defaultCombo},
        {R"({"modifiers":0,"keyCode":4294967295,"more":[]})", HotKeyCombo{4294967295, 0}},
        {R"({"keyCode":9})", {}},
        {R"({"modifiers":768})", {}},
        {R"({"keyCode":true,"modifiers":768})", {}},
        {R"({"keyCode":-1,"modifiers":768})", {}},
        {R"({"keyCode":9.5,"modifiers":768})", {}},
        {R"({"keyCode":9,"modifiers":4294967296})", {}},
        {R"({"keyCode":9,"modifiers":768)", {}},
        {"", {}},
    };

    for (const auto &row : cases)
        EXPECT_EQ(HotKeyCombo::fromJson(row.json), row.combo) << row.json;
}

TEST(HotKeyCombo, isShownInTheFixedOrderOfModifiers)
{
    EXPECT_EQ(HotKeyCombo::defaultCombo.displayString(), QStringLiteral("⇧⌘V"));
    EXPECT_EQ((HotKeyCombo{49, optionKey | controlKey}).displayString(), QStringLiteral("⌃⌥Space"));
    EXPECT_EQ((HotKeyCombo{105, 0x1b00}).keyCaps().join(QLatin1Char(' ')), QStringLiteral("⌃ ⌥ ⇧ ⌘ #105"));
    EXPECT_EQ((HotKeyCombo{65535, 0xe4ff}).displayString(), QStringLiteral("#65535"));
}
