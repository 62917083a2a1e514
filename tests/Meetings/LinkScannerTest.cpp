#include "Meetings/LinkScanner.h"
#include "LinkPatternOracle.h"

#include <gmock/gmock.h>

#include <array>
#include <random>
#include <string>

namespace mivora {

namespace {

std::vector<std::string_view> matchesOfScanner(std::string_view text)
{
    std::vector<std::string_view> matches;
    LinkScanner scanner(text);
    while (const auto match = scanner.next())
        matches.push_back(*match);
    return matches;
}

std::string utf8(char32_t c)
{
    if (c < 0x80)
        return {char(c)};
    if (c < 0x800)
        return {char(0xc0 | c >> 6), char(0x80 | (c & 0x3f))};
    return {char(0xe0 | c >> 12), char(0x80 | (c >> 6 & 0x3f)), char(0x80 | (c & 0x3f))};
}

TEST(LinkScannerTest, endsLinksAtTheSameCharactersAsIcu)
{
    for (char32_t c = 0; c <= 0xffff; ++c) {
        if (c >= 0xd800 && c <= 0xdfff)
            continue;
        const std::string text = "https://a" + utf8(c) + "b";
        ASSERT_EQ(matchesOfScanner(text), test::matchesOfLinkPattern(text)) << std::hex << std::uint32_t(c);
    }
}

TEST(LinkScannerTest, agreesWithIcuOnRandomTexts)
{
    // Pieces of links, of near misses, and of white space, whole and cut off.
    constexpr std::array<std::string_view, 24> pieces{"https://",
                                                      "https:/",
                                                      "http",
                                                      "h",
                                                      "s://",
                                                      ":",
                                                      "/",
                                                      "//",
                                                      "a.b/c",
                                                      " ",
                                                      "\n",
                                                      "(",
                                                      "]",
                                                      "'",
                                                      "\u00a0",
                                                      "\u3000",
                                                      "\u200b",
                                                      "\xc2",
                                                      "\xa0",
                                                      "\xe2\x80",
                                                      "\xf0\x9f",
                                                      "\xff",
                                                      "plain text of some length, ",
                                                      "é"};
    std::mt19937 random(20240229);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> length(0, 60);
    for (int round = 0; round < 5'000; ++round) {
        std::string text;
        for (int i = length(random); i > 0; --i)
            text += pieces.at(pick(random));
        ASSERT_EQ(matchesOfScanner(text), test::matchesOfLinkPattern(text)) << testing::PrintToString(text);
    }
}

} // namespace

} // namespace mivora
