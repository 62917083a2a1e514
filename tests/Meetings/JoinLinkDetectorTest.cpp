#include "Meetings/JoinLinkDetector.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::Optional;

Url url(std::string_view text)
{
    return Url::parse(text).value();
}

std::optional<std::string> textOf(const std::optional<Url> &link)
{
    return link ? std::optional(link->text()) : std::nullopt;
}

TEST(JoinLinkDetectorTest, knowsTheServicesByTheirLinks)
{
    const struct
    {
        const char *trap;
        std::string_view link;
        Service service;
    } rows[] = {
        {"Zoom", "https://zoom.us/j/1", Service::zoom},
        {"Zoom subdomain", "https://us02web.zoom.us/j/1", Service::zoom},
        {"Zoom in capitals", "https://US02web.ZOOM.us/j/1", Service::zoom},
        {"Zoom's personal link", "https://zoom.us/my/name", Service::zoom},
        {"Zoom with a port", "https://zoom.us:443/j/1", Service::zoom},
        {"host that only ends like Zoom's", "https://notzoom.us/j/1", Service::other},
        {"Zoom as a subdomain", "https://zoom.us.evil.example/j/1", Service::other},
        {"Zoom as the user", "https://zoom.us@evil.example/j/1", Service::other},
        {"Meet", "https://meet.google.com/abc-defg-hij", Service::meet},
        {"Meet without a path", "https://meet.google.com", Service::other},
        {"Meet with a bare slash", "https://meet.google.com/?a=b", Service::other},
        {"Meet subdomain", "https://a.meet.google.com/abc", Service::other},
        {"Teams", "https://teams.microsoft.com/l/meetup-join/19%3ameeting", Service::teams},
        {"Teams short link", "https://teams.microsoft.com/meet/123?p=x", Service::teams},
        {"Teams encoded", "https://teams.microsoft.com/%6C/meetup-join/1", Service::teams},
        {"Teams in capitals", "https://teams.microsoft.com/L/meetup-join/1", Service::other},
        {"Teams page", "https://teams.microsoft.com/l/channel/1", Service::other},
        {"Teams cut short", "https://teams.microsoft.com/l/meetup-join", Service::other},
        {"Teams for consumers", "https://teams.live.com/meet/123", Service::teams},
        {"Teams for consumers, the other form", "https://teams.live.com/l/meetup-join/1", Service::other},
        {"Teams subdomain", "https://x.teams.microsoft.com/meet/1", Service::other},
        {"Webex", "https://webex.com/meet/a", Service::webex},
        {"Webex subdomain", "https://acme.webex.com/acme/j.php?MTID=m1", Service::webex},
        {"FaceTime", "https://facetime.apple.com/join#v=1", Service::facetime},
        {"FaceTime subdomain", "https://www.facetime.apple.com/join", Service::other},
        {"any other", "https://example.com/zoom.us/j/1", Service::other},
    };

    for (const auto &row : rows) {
        const auto joinLink = classify(url(row.link));
        ASSERT_TRUE(joinLink) << row.trap;
        EXPECT_EQ(joinLink->service, row.service) << row.trap;
        EXPECT_EQ(joinLink->webURL.text(), row.link) << row.trap;
    }
}

TEST(JoinLinkDetectorTest, classifiesOnlyHttpsLinksWithAHost)
{
    for (const char *text :
         {"http://zoom.us/j/1", "HTTPS://zoom.us/j/1", "https:zoom.us/j/1", "mailto:a@zoom.us"})
        EXPECT_EQ(classify(url(text)), std::nullopt) << text;
}

TEST(JoinLinkDetectorTest, makesTheLinksOfTheServicesApps)
{
    const struct
    {
        const char *trap;
        std::string_view link;
        std::optional<std::string> native;
    } rows[] = {
        {"number", "https://zoom.us/j/123", "zoommtg://zoom.us/join?confno=123"},
        {"subdomain", "https://us02web.zoom.us/j/123", "zoommtg://zoom.us/join?confno=123"},
        {"password", "https://zoom.us/j/1?pwd=abc&uname=x", "zoommtg://zoom.us/join?confno=1&pwd=abc"},
        {"password after others", "https://zoom.us/j/1?a=b&pwd=abc#x",
         "zoommtg://zoom.us/join?confno=1&pwd=abc"},
        {"empty password", "https://zoom.us/j/1?pwd=", "zoommtg://zoom.us/join?confno=1&pwd="},
        {"password without a value", "https://zoom.us/j/1?pwd", "zoommtg://zoom.us/join?confno=1"},
        {"plus sign", "https://zoom.us/j/1?pwd=a+b", "zoommtg://zoom.us/join?confno=1&pwd=a+b"},
        {"encoded password", "https://zoom.us/j/1?pwd=%61%3D", "zoommtg://zoom.us/join?confno=1&pwd=a="},
        {"number sign in it", "https://zoom.us/j/1?pwd=a%23b", "zoommtg://zoom.us/join?confno=1&pwd=a#b"},
        {"percent sign in it", "https://zoom.us/j/1?pwd=a%2525", "zoommtg://zoom.us/join?confno=1&pwd=a%25"},
        {"blank in it", "https://zoom.us/j/1?pwd=a%20b", std::nullopt},
        {"lone percent sign in it", "https://zoom.us/j/1?pwd=a%25", std::nullopt},
        {"NUL in it", "https://zoom.us/j/1?pwd=%00", std::nullopt},
        {"encoded path", "https://zoom.us/%6A/%31", "zoommtg://zoom.us/join?confno=1"},
        {"empty components", "https://zoom.us//j//1/", "zoommtg://zoom.us/join?confno=1"},
        {"more path", "https://zoom.us/j/1/success", "zoommtg://zoom.us/join?confno=1"},
        {"personal link", "https://zoom.us/my/name", std::nullopt},
        {"letters", "https://zoom.us/j/12a", std::nullopt},
        {"other digits", "https://zoom.us/j/%D9%A1", std::nullopt},
        {"no number", "https://zoom.us/j/", std::nullopt},
        {"capital J", "https://zoom.us/J/1", std::nullopt},
        {"deeper", "https://zoom.us/wc/j/1", std::nullopt},
        {"Teams", "https://Teams.Microsoft.com/meet/1?p=%41#x",
         "msteams://Teams.Microsoft.com/meet/1?p=%41#x"},
        {"FaceTime", "https://facetime.apple.com/join#v=1", "https://facetime.apple.com/join#v=1"},
        {"Meet", "https://meet.google.com/abc", std::nullopt},
        {"Webex", "https://webex.com/meet/a", std::nullopt},
        {"plain", "https://example.com/j/1", std::nullopt},
    };

    for (const auto &row : rows)
        EXPECT_EQ(textOf(classify(url(row.link))->nativeURL), row.native) << row.trap;
}

TEST(JoinLinkDetectorTest, unwrapsTheLinksOfTheRedirector)
{
    const struct
    {
        const char *trap;
        std::string_view link;
        std::string target;
    } rows[] = {
        {"encoded", "https://www.google.com/url?q=https%3A%2F%2Fzoom.us%2Fj%2F1%3Fpwd%3Da&sa=D",
         "https://zoom.us/j/1?pwd=a"},
        {"not encoded", "https://www.google.com/url?sa=D&q=https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"bare host", "https://google.com/url?q=https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"host that only ends so", "https://notgoogle.com/url?q=https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"encoded path", "https://google.com/%75rl?q=https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"once only", "https://google.com/url?q=https://google.com/url?q%3Dhttps://a.b",
         "https://google.com/url?q=https://a.b"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(unwrapRedirect(url(row.link)).text(), row.target) << row.trap;
}

TEST(JoinLinkDetectorTest, leavesOtherLinksAlone)
{
    for (const char *link :
         {"https://www.Google.com/url?q=https://zoom.us/j/1",
          "https://google.com.evil.example/url?q=https://a.b",
          "https://www.google.com/url/x?q=https://zoom.us/j/1",
          "https://www.google.com/URL?q=https://zoom.us/j/1",
          "https://www.google.com/url?q=http://zoom.us/j/1",
          "https://www.google.com/url?q=HTTPS://zoom.us/j/1", "https://www.google.com/url?q=zoom.us/j/1",
          "https://www.google.com/url?q=https://a%20b", "https://www.google.com/url?Q=https://zoom.us/j/1",
          "https://www.google.com/url?q&q=https://zoom.us/j/1", "https://www.google.com/url?q=",
          "https://www.google.com/url", "https:google.com/url?q=https://zoom.us"})
        EXPECT_EQ(unwrapRedirect(url(link)).text(), link);
}

TEST(JoinLinkDetectorTest, picksOneLink)
{
    using Text = std::optional<std::string_view>;

    const struct
    {
        const char *trap;
        Text url;
        Text location;
        Text notes;
        std::optional<std::string> webURL;
    } rows[] = {
        {"nothing", {}, {}, {}, {}},
        {"no link", "mailto:a@b.c", "Room 4", "Bring cake", {}},
        {"known service first", {}, {}, "https://a.b https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"earliest known service", {}, {}, "https://webex.com/a https://zoom.us/j/1", "https://webex.com/a"},
        {"earliest plain link", {}, {}, "https://a.b https://c.d", "https://a.b"},
        {"plain URL over a service in the notes", "https://a.b", {}, "https://zoom.us/j/1", "https://a.b"},
        {"location before notes", {}, "https://a.b", "https://zoom.us/j/1", "https://a.b"},
        {"URL with a scheme in capitals", "HTTPS://a.b", {}, "https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"link inside of the URL", "x:https://zoom.us/j/1.", {}, {}, "https://zoom.us/j/1"},
        {"broken URL", "https://a.b/|", "", "https://zoom.us/j/1", "https://zoom.us/j/1"},
        {"wrapped",
         {},
         {},
         "https://a.b https://google.com/url?q=https://zoom.us/j/1",
         "https://zoom.us/j/1"},
        {"wrapped http",
         {},
         {},
         "https://google.com/url?q=http://zoom.us",
         "https://google.com/url?q=http://zoom.us"},
        {"wrapped without a host", {}, "https://google.com/url?q=https:a", "https://a.b", "https://a.b"},
    };

    for (const auto &row : rows) {
        const auto link = detect(row.url, row.location, row.notes);
        EXPECT_EQ(link ? std::optional(link->webURL.text()) : std::nullopt, row.webURL) << row.trap;
    }
}

} // namespace

} // namespace mivora
