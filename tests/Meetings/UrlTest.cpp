#include "Meetings/Url.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

TEST(UrlTest, readsTheParts)
{
    const struct
    {
        const char *trap;
        std::string_view text;
        std::string_view scheme;
        std::optional<std::string_view> host;
        std::string path;
        std::vector<std::string> components;
    } rows[] = {
        {"encoded path", "https://h/%6A/a%2Fb", "https", "h", "/j/a/b", {"/", "j", "a/b"}},
        {"empty components", "https://h//j///1/", "https", "h", "//j///1/", {"/", "j", "1"}},
        {"user like a host", "https://zoom.us@Evil.Example?a/b", "https", "Evil.Example", "", {}},
        {"IP literal", "https://[::1]:80/a", "https", "[::1]", "/a", {"/", "a"}},
        {"no authority", "https:a/b", "https", std::nullopt, "a/b", {"a", "b"}},
    };

    for (const auto &row : rows) {
        const auto url = Url::parse(row.text);
        ASSERT_TRUE(url) << row.trap;
        EXPECT_EQ(url->text(), row.text) << row.trap;
        EXPECT_EQ(url->scheme(), row.scheme) << row.trap;
        EXPECT_EQ(url->host(), row.host) << row.trap;
        EXPECT_EQ(url->path(), row.path) << row.trap;
        EXPECT_EQ(url->pathComponents(), row.components) << row.trap;
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
