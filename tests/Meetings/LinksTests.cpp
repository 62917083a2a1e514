#include "Meetings/JoinLinkDetector.h"

#include <gmock/gmock.h>

#include <string>

namespace mivora {

namespace {

using testing::ElementsAre;
using testing::SizeIs;

std::vector<std::string> found(std::string_view text)
{
    std::vector<std::string> texts;
    for (const Url &link : links(text))
        texts.push_back(link.text());
    return texts;
}

TEST(LinksTest, findsLinksInOrderAndWithoutWhatStandsAroundThem)
{
    const std::pair<std::string_view, std::vector<std::string>> rows[] = {
        {"https://b.c https://a.b https://a.b", {"https://b.c", "https://a.b", "https://a.b"}},
        {"seehttps://zoom.us/j/1?!.,;:", {"https://zoom.us/j/1"}},
        {"(https://zoom.us/j/1)", {"https://zoom.us/j/1"}},
        {"https://a\u2028b https://c\u0085d", {"https://a", "https://c"}},
        {"https://a\u1680 https://b\u200a https://c\u205f", {"https://a", "https://b", "https://c"}},
        {"https://a.example/https://ZOOM.us/J/%6a", {"https://a.example/https://ZOOM.us/J/%6a"}},
    };
    for (const auto &[text, links] : rows)
        EXPECT_EQ(found(text), links) << text;
}

TEST(LinksTest, findsNothingInWhatIsNoLink)
{
    for (const std::string_view text :
         {"https://zoom.us/j/1\u200bnow", "https://zoom.us/j/é", "HTTPS://zoom.us/j/1 Https://zoom.us/j/1",
          "https:/ https:/zoom.us hhhhttps https//zoom.us https: //zoom.us",
          "https:// https://... https://( https://", "https:///j/1 https://:80/j/1 https://me@/j/1",
          "https://z/| https://z/{ https://z/^ https://z/` https://z/\\ https://z/\x7f",
          "https://zoom.us/\xff https://zoom.us/\xe2\x80 https://zoom.us/\xc2"})
        EXPECT_THAT(found(text), SizeIs(0)) << text;
    EXPECT_THAT(found(std::string_view("https://zoom.us/j/1\0", 20)), SizeIs(0)) << "NUL";
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
    for (const char *unit : {"https:/ ", "[", "https://["})
        EXPECT_THAT(links(repeated(unit)), SizeIs(0)) << unit;
    EXPECT_THAT(links(repeated("https://a ")), SizeIs(200'000)) << "many links";
}

} // namespace

} // namespace mivora
