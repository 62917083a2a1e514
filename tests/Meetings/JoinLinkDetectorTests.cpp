#include "Meetings/JoinLinkDetector.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::IsEmpty;

Url url(std::string_view text)
{
    return Url::parse(text).value();
}

std::vector<std::string> found(std::string_view text)
{
    std::vector<std::string> texts;
    for (const Url &link : links(text))
        texts.push_back(link.text());
    return texts;
}

TEST(JoinLinkDetectorTest, findsLinksInOrderAndWithoutWhatStandsAroundThem)
{
    const std::pair<std::string_view, std::vector<std::string>> rows[] = {
        {"https://b.c https://a.b https://a.b", {"https://b.c", "https://a.b", "https://a.b"}},
        {"seehttps://zoom.us/j/1?!.,;:", {"https://zoom.us/j/1"}},
        {"(https://zoom.us/j/1)", {"https://zoom.us/j/1"}},
        {"https://a\u2028b https://c\u0085d", {"https://a", "https://c"}},
        {"https://a\u1680 https://b\u200a https://c\u205f", {"https://a", "https://b", "https://c"}},
        {"https://a.example/https://ZOOM.us/J/%6a", {"https://a.example/https://ZOOM.us/J/%6a"}},
        {"https://z:/ https://z:65535 https://z:000443/",
         {"https://z:/", "https://z:65535", "https://z:000443/"}},
    };
    for (const auto &[text, links] : rows)
        EXPECT_EQ(found(text), links) << text;
}

TEST(JoinLinkDetectorTest, findsNothingInWhatIsNoLink)
{
    for (const std::string_view text :
         {"https://zoom.us/j/1\u200bnow", "https://zoom.us/j/é", "HTTPS://zoom.us/j/1 Https://zoom.us/j/1",
          "https:/ https:/zoom.us hhhhttps https//zoom.us https: //zoom.us",
          "https:// https://... https://( https://", "https:///j/1 https://:80/j/1 https://me@/j/1",
          "https://z/| https://z/{ https://z/^ https://z/` https://z/\\ https://z/\x7f",
          "https://zoom.us/\xff https://zoom.us/\xe2\x80 https://zoom.us/\xc2",
          "https://z:65536/ https://z:18446744073709551617/ https://z:x/ https://z:80x/ https://z:%38/",
          "https://a@b@c/ https://z/a?b#c#d"})
        EXPECT_THAT(found(text), IsEmpty()) << text;
    EXPECT_THAT(found(std::string_view("https://zoom.us/j/1\0", 20)), IsEmpty()) << "NUL";
}

TEST(JoinLinkDetectorTest, knowsTheServicesAndTheLinksOfTheirApps)
{
    using App = std::optional<std::string>;
    const std::tuple<std::string_view, Service, App> rows[] = {
        {"https://US02web.ZOOM.us/j/123", Service::zoom, "zoommtg://zoom.us/join?confno=123"},
        {"https://zoom.us/j/1?a=b&pwd=abc&uname=x#y", Service::zoom,
         "zoommtg://zoom.us/join?confno=1&pwd=abc"},
        {"https://zoom.us/j/1?pwd=", Service::zoom, "zoommtg://zoom.us/join?confno=1&pwd="},
        {"https://zoom.us/j/1?pwd=a+%61%3D%23b", Service::zoom, "zoommtg://zoom.us/join?confno=1&pwd=a+a=#b"},
        {"https://zoom.us/j/1?pwd=a%20b", Service::zoom, {}},
        {"https://zoom.us//%6A//%31/success", Service::zoom, "zoommtg://zoom.us/join?confno=1"},
        {"https://zoom.us/j/1?pwd&pwd=a", Service::zoom, "zoommtg://zoom.us/join?confno=1"},
        {"https://zoom.us/j/1?PWD=b&%70wd=a&pwd=b", Service::zoom, "zoommtg://zoom.us/join?confno=1&pwd=a"},
        {"https://zoom.us/j/a%2F1", Service::zoom, {}},
        {"https://zoom.us/j", Service::zoom, {}},
        {"https://zoom.us/j/%D9%A1", Service::zoom, {}},
        {"https://notzoom.us/j/1", Service::other, {}},
        {"https://zoom.us.evil.example/j/1", Service::other, {}},
        {"https://zoom.us@evil.example/j/1", Service::other, {}},
        {"https://meet.google.com/abc-defg-hij", Service::meet, {}},
        {"https://meet.google.com/", Service::other, {}},
        {"https://a.meet.google.com/abc", Service::other, {}},
        {"https://teams.microsoft.com/%6C/meetup-join/1", Service::teams,
         "msteams://teams.microsoft.com/%6C/meetup-join/1"},
        {"https://Teams.Microsoft.com/meet/1?p=%41#x", Service::teams,
         "msteams://Teams.Microsoft.com/meet/1?p=%41#x"},
        {"https://teams.microsoft.com/l/meetup-join", Service::other, {}},
        {"https://teams.live.com/meet/123", Service::teams, "msteams://teams.live.com/meet/123"},
        {"https://teams.live.com/l/meetup-join/1", Service::other, {}},
        {"https://webex.com/meet/a", Service::webex, {}},
        {"https://acme.webex.com/acme/j.php?MTID=m1", Service::webex, {}},
        {"https://facetime.apple.com/join#v=1", Service::facetime, "https://facetime.apple.com/join#v=1"},
        {"https://www.facetime.apple.com/join", Service::other, {}},
    };
    for (const auto &[link, service, app] : rows) {
        const auto joinLink = classify(url(link));
        ASSERT_TRUE(joinLink) << link;
        EXPECT_EQ(joinLink->service, service) << link;
        EXPECT_EQ(joinLink->webURL.text(), link);
        EXPECT_EQ(joinLink->nativeURL ? App(joinLink->nativeURL->text()) : App(), app) << link;
    }
    for (const char *text :
         {"http://zoom.us/j/1", "HTTPS://zoom.us/j/1", "https:zoom.us/j/1", "mailto:a@zoom.us"})
        EXPECT_EQ(classify(url(text)), std::nullopt) << text;
}

TEST(JoinLinkDetectorTest, unwrapsTheLinksOfTheRedirectorOnce)
{
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"https://www.google.com/url?q=https%3A%2F%2Fa.b%2Fj%3Fpwd%3Da&sa=D", "https://a.b/j?pwd=a"},
        {"https://notgoogle.com/%75rl?sa=D&q=https://a.b", "https://a.b"},
        {"https://google.com/url?q=https://google.com/url?q%3Dhttps://a.b",
         "https://google.com/url?q=https://a.b"},
    };
    for (const auto &[link, target] : rows)
        EXPECT_EQ(unwrapRedirect(url(link)).text(), target) << link;
    for (const char *other :
         {"https://www.Google.com/url?q=https://a.b", "https://google.com.evil.example/url?q=https://a.b",
          "https://www.google.com/url/x?q=https://a.b", "https://www.google.com/url?q=http://a.b",
          "https://www.google.com/url?q=https://a%20b", "https://www.google.com/url"})
        EXPECT_EQ(unwrapRedirect(url(other)).text(), other);
}

TEST(JoinLinkDetectorTest, picksOneLink)
{
    using Text = std::optional<std::string_view>;
    // Of the URL, the location and the notes.
    const std::tuple<Text, Text, Text, Text> rows[] = {
        {{}, {}, {}, {}},
        {{}, {}, "https://a.b https://webex.com/a https://zoom.us/j/1", "https://webex.com/a"},
        {{}, {}, "https://c.d https://a.b", "https://c.d"},
        {"https://a.b", "https://zoom.us/j/2", "https://zoom.us/j/1", "https://a.b"},
        {{}, "https://a.b", "https://zoom.us/j/1", "https://a.b"},
        {"HTTPS://a.b", {}, "https://c.d", "https://c.d"},
        {"x:https://a.b.", {}, {}, "https://a.b"},
        {{}, {}, "https://a.b https://google.com/url?q=https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"https://google.com/url?q=http://a", {}, {}, "https://google.com/url?q=http://a"},
        {{}, "https://google.com/url?q=https:a", "https://a.b", "https://a.b"},
    };
    for (const auto &[url, location, notes, webURL] : rows) {
        const auto link = detect(url, location, notes);
        EXPECT_EQ(link ? Text(link->webURL.text()) : Text(), webURL);
    }
}

} // namespace

} // namespace mivora
