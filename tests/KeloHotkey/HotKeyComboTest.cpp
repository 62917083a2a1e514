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
        {R"({"keyCode":"9","modifiers":768})", {}},
        {R"({"keyCode":9,"modifiers":null})", {}},
        {R"({"keyCode":-1,"modifiers":768})", {}},
        {R"({"keyCode":9.5,"modifiers":768})", {}},
        {R"({"keyCode":9,"modifiers":4294967296})", {}},
        {R"({"keyCode":9,"modifiers":1e300})", {}},
        {R"([9,768])", {}},
        {R"({"keyCode":9,"modifiers":768)", {}},
        {"", {}},
    };

    for (const auto &row : cases)
        EXPECT_EQ(HotKeyCombo::fromJson(row.json), row.combo) << row.json;
}

TEST(HotKeyCombo, isStoredWithTheKeyFirst)
{
    EXPECT_EQ(HotKeyCombo::defaultCombo.toJson(), R"({"keyCode":9,"modifiers":768})");
    const HotKeyCombo highest{4294967295, 4294967295};
    EXPECT_EQ(HotKeyCombo::fromJson(highest.toJson()), highest);
}

TEST(HotKeyCombo, takesTheFourModifiersOfKeyEvents)
{
    EXPECT_EQ(HotKeyCombo::carbonFlags(Qt::MetaModifier | Qt::KeypadModifier), 0x100u);
    EXPECT_EQ(HotKeyCombo::carbonFlags(Qt::ShiftModifier), 0x200u);
    EXPECT_EQ(HotKeyCombo::carbonFlags(Qt::AltModifier | Qt::GroupSwitchModifier), 0x800u);
    EXPECT_EQ(HotKeyCombo::carbonFlags(Qt::ControlModifier), 0x1000u);
    EXPECT_EQ(HotKeyCombo::carbonFlags(Qt::KeyboardModifiers::fromInt(-1)), 0x1b00u);
}

TEST(HotKeyCombo, isShownInTheFixedOrderOfModifiers)
{
    EXPECT_EQ(HotKeyCombo::defaultCombo.displayString(), QStringLiteral("⇧⌘V"));
    EXPECT_EQ((HotKeyCombo{49, optionKey | controlKey}).displayString(), QStringLiteral("⌃⌥Space"));
    EXPECT_EQ((HotKeyCombo{105, 0x1b00}).keyCaps().join(QLatin1Char(' ')), QStringLiteral("⌃ ⌥ ⇧ ⌘ #105"));
    EXPECT_EQ((HotKeyCombo{65535, 0xe4ff}).displayString(), QStringLiteral("#65535"));
}

TEST(HotKeyComboDeathTest, stopsTheProgramForAnImpossibleKeyCode)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH((HotKeyCombo{65536, commandKey}).displayString(), "65536 is no key code");
}
