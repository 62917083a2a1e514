#include "Meetings/Color.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(ColorTest, readsHexadecimalForms)
{
    const Color expected{0x11, 0xaa, 0xff};
    for (const char *text :
         {"#1af", "#11aaff", "#11AAFF", "#11aaff00", "#11aaffff", " #11aaff\n", "\u00a0#1AF"})
        EXPECT_EQ(Color::fromHex(text), expected) << text;
}

TEST(ColorTest, refusesEverythingElse)
{
    for (const char *text : {"", "#", "11aaff", "#11aaf", "#11aafff", "#11aaff0011", "#11aaf ", "#-1aaff",
                             "#+1a", "#0x1", "# 11aaff", "#11 aff", "red", "#ggg", "##1af"})
        EXPECT_EQ(Color::fromHex(text), std::nullopt) << text;
}

TEST(ColorTest, writesWhatItReads)
{
    for (const char *text : {"#000000", "#01020f", "#ffffff"})
        EXPECT_EQ(Color::fromHex(text)->hex(), text);
}

} // namespace mivora
