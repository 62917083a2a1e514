#include "Calendar/CalendarColor.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(CalendarColor, isANameOrANumber)
{
    const std::pair<const char *, std::optional<Color>> cases[] = {
        {"turquoise", Color{64, 224, 208}},
        {"DarkSlateGrey", Color{47, 79, 79}},
        {"#0a0b0c", Color{10, 11, 12}},
        {"rgb(53,132,228)", Color{53, 132, 228}},
        {"rgba(53, 132, 228, 0.5)", Color{53, 132, 228}},
        {"rgb(53,132)", std::nullopt},
        {"no colour", std::nullopt},
    };
    for (const auto &[text, color] : cases)
        EXPECT_EQ(colorFrom(text), color) << text;
}

} // namespace mivora
