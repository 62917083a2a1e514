#include "Meetings/JoinLinkDetector.h"

#include <gmock/gmock.h>

#include <string>

namespace mivora {

namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr std::string_view withNul("https://zoom.us/j/1\0", 20);

TEST(LinksTest, findsLinksAndNothingElse)
{
    const struct
    {
        const char *trap;
        std::string_view text;
        std::vector<std::string> found;
    } rows[] = {
        {"in order", "https://b.c https://a.b https://a.b", {"https://b.c", "https://a.b", "https://a.b"}},
        {"several marks", "seehttps://zoom.us/j/1?!.,;:", {"https://zoom.us/j/1"}},
        {"in parentheses", "(https://zoom.us/j/1)", {"https://zoom.us/j/1"}},
        {"ideographic space", "https://zoom.us/j/1\u3000now", {"https://zoom.us/j/1"}},
        {"line separator", "https://a\u2028b https://c\u0085d", {"https://a", "https://c"}},
        {"other spaces",
         "https://a\u1680 https://b\u200a https://c\u205f",
         {"https://a", "https://b", "https://c"}},
        {"link in a link", "https://a.example/https://b.example", {"https://a.example/https://b.example"}},
        {"capitals in the host", "https://ZOOM.us/J/%6a", {"https://ZOOM.us/J/%6a"}},

        {"zero-width space", "https://zoom.us/j/1\u200bnow", {}},
        {"non-ASCII letter", "https://zoom.us/j/é", {}},
        {"capital scheme", "HTTPS://zoom.us/j/1 Https://zoom.us/j/1", {}},
        {"near misses", "https:/ https:/zoom.us hhhhttps https//zoom.us https: //zoom.us", {}},
        {"scheme alone", "https:// https://... https://( https://", {}},
        {"no host", "https:///j/1 https://:80/j/1 https://me@/j/1", {}},
        {"lone percent sign", "https://zoom.us/% https://zoom.us/%4 https://zoom.us/%zz", {}},
        {"no URL's characters",
         "https://z/| https://z/{ https://z/^ https://z/` https://z/\\ https://z/\x7f",
         {}},
        {"NUL", withNul, {}},
        {"invalid UTF-8", "https://zoom.us/\xff https://zoom.us/\xe2\x80 https://zoom.us/\xc2", {}},
    };

    for (const auto &row : rows) {
        std::vector<std::string> found;
        for (const Url &link : links(row.text))
            found.push_back(link.text());
        EXPECT_EQ(found, row.found) << row.trap;
    }
}

TEST(LinksTest, readsHugeTextsInLinearTime)
{
    const auto repeated = [](std::string_view unit) {
        std::string text;
        while (text.size() < 2'000'000)
            text += unit;
        return text;
    };
    EXPECT_THAT(links(repeated("https://")), SizeIs(1)) << "one link of openings";
    EXPECT_THAT(links("https://a/" + repeated("b")), SizeIs(1)) << "one long link";
    EXPECT_THAT(links("https://a/" + repeated("?")), ElementsAre(*Url::parse("https://a/"))) << "punctuation";
    EXPECT_THAT(links(repeated("https:/ ")), SizeIs(0)) << "near misses";
    EXPECT_THAT(links(repeated("[")), SizeIs(0)) << "brackets";
    EXPECT_THAT(links(repeated("https://[")), SizeIs(0)) << "openings without a link";
    EXPECT_THAT(links(repeated("https://a ")), SizeIs(200'000)) << "many links";
}

} // namespace

} // namespace mivora
