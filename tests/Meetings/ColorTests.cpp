#include "Meetings/Color.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(ColorTest, readsHexadecimalFormsAndNothingElse)
{
    for (const char *text : {"#1af", "#11AAff", "#11aaff00", " #11aaff\n", "\u00a0#1AF"})
        EXPECT_EQ(Color::fromHex(text), (Color{0x11, 0xaa, 0xff})) << text;
    for (const char *text : {"", "#", "11aaff", "#11aaf", "#11aafff", "#11aaff0011", "#-1aaff", "#+1a",
                             "#0x1", "#11 aff", "red", "#ggg", "##1af"})
        EXPECT_EQ(Color::fromHex(text), std::nullopt) << text;
    EXPECT_EQ(Color::fromHex("#01020f")->hex(), "#01020f");
}

} // namespace mivora
