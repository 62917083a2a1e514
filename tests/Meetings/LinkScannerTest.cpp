#include "Meetings/LinkScanner.h"
#include "LinkPatternOracle.h"

#include <gmock/gmock.h>

#include <string>
#include <unicode/unistr.h>

namespace mivora {

namespace {

TEST(LinkScannerTest, endsLinksAtTheSameCharactersAsIcu)
{
    for (char32_t c = 0; c <= 0xffff; ++c) {
        std::string text = "https://a";
        icu::UnicodeString(UChar32(c)).toUTF8String(text) += 'b';
        ASSERT_EQ(LinkScanner(text).next(), test::matchesOfLinkPattern(text).at(0))
            << std::hex << std::uint32_t(c);
    }
}

} // namespace

} // namespace mivora
