#include "Meetings/Url.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

TEST(UrlTest, readsTheParts)
{
    using Parts = std::vector<std::string>;
    // The host, the path and its components.
    const std::tuple<std::string_view, const char *, std::string, Parts> rows[] = {
        {"https://h/%6A/a%2Fb", "h", "/j/a/b", {"/", "j", "a/b"}},
        {"https://h//j///1/", "h", "//j///1/", {"/", "j", "1"}},
        {"https://zoom.us@Evil.Example?a/b", "Evil.Example", "", {}},
        {"https://[::1]:80/a", "[::1]", "/a", {"/", "a"}},
        {"https:a/b", "none", "a/b", {"a", "b"}},
    };
    for (const auto &[text, host, path, components] : rows) {
        const auto url = Url::parse(text);
        ASSERT_TRUE(url) << text;
        EXPECT_EQ(url->text(), text);
        EXPECT_EQ(url->scheme(), "https") << text;
        EXPECT_EQ(url->host().value_or("none"), host) << text;
        EXPECT_EQ(url->path(), path) << text;
        EXPECT_EQ(url->pathComponents(), components) << text;
    }
}

TEST(UrlTest, takesPortsOfSixteenBitsOnly)
{
    for (const char *port : {"", "0", "443", "65535", "0000000000000000443"})
        EXPECT_TRUE(Url::parse("https://h:" + std::string(port) + "/a")) << port;
    for (const char *port : {"65536", "70000", "100000", "18446744073709551617", "x", "80x", "-1", "%38"})
        EXPECT_FALSE(Url::parse("https://h:" + std::string(port) + "/a")) << port;
}

TEST(UrlTest, refusesWhatIsNoUri)
{
    for (const char *text : {"", "zoom.us", "//zoom.us/j/1", "1https://h", ":a", "https://[::1]x/a",
                             "https://[::1/a", "https://a@b@c/", "https://h/a[b", "https://h/a?b#c#d",
                             "https://h/ ", " https://h/", "https://h\n"})
        EXPECT_FALSE(Url::parse(text)) << text;
}

TEST(UrlTest, readsQueryValues)
{
    const auto url = Url::parse("https://h/?first&empty=&%71=a%20b+c%26&q=2&first=later&=unnamed#q=3");
    ASSERT_TRUE(url);
    EXPECT_EQ(url->queryValue("q"), "a b+c&") << "encoded name, plus sign, the first of two";
    EXPECT_EQ(url->queryValue("empty"), "");
    EXPECT_EQ(url->queryValue("first"), std::nullopt) << "the first item counts, also without a value";
    EXPECT_EQ(url->queryValue(""), "unnamed") << "the last value, without the fragment";
    EXPECT_EQ(url->queryValue("Q"), std::nullopt);
    EXPECT_EQ(url->queryValue("missing"), std::nullopt);
    EXPECT_EQ(Url::parse("https://h/")->queryValue("q"), std::nullopt);
}

} // namespace

} // namespace mivora
