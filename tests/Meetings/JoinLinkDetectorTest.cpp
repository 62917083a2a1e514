#include "Meetings/JoinLinkDetector.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

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
    const std::pair<std::string_view, Service> rows[] = {
        {"https://US02web.ZOOM.us/j/1", Service::zoom},
        {"https://notzoom.us/j/1", Service::other},
        {"https://zoom.us.evil.example/j/1", Service::other},
        {"https://zoom.us@evil.example/j/1", Service::other},
        {"https://meet.google.com/abc-defg-hij", Service::meet},
        {"https://meet.google.com", Service::other},
        {"https://a.meet.google.com/abc", Service::other},
        {"https://teams.microsoft.com/l/meetup-join/19%3ameeting", Service::teams},
        {"https://teams.microsoft.com/meet/123?p=x", Service::teams},
        {"https://teams.microsoft.com/%6C/meetup-join/1", Service::teams},
        {"https://teams.microsoft.com/l/meetup-join", Service::other},
        {"https://teams.live.com/meet/123", Service::teams},
        {"https://teams.live.com/l/meetup-join/1", Service::other},
        {"https://webex.com/meet/a", Service::webex},
        {"https://acme.webex.com/acme/j.php?MTID=m1", Service::webex},
        {"https://facetime.apple.com/join#v=1", Service::facetime},
        {"https://www.facetime.apple.com/join", Service::other},
    };

    for (const auto &[link, service] : rows) {
        const auto joinLink = classify(url(link));
        ASSERT_TRUE(joinLink) << link;
        EXPECT_EQ(joinLink->service, service) << link;
        EXPECT_EQ(joinLink->webURL.text(), link);
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
    const std::pair<std::string_view, std::optional<std::string>> rows[] = {
        {"https://us02web.zoom.us/j/123", "zoommtg://zoom.us/join?confno=123"},
        {"https://zoom.us/j/1?a=b&pwd=abc&uname=x#y", "zoommtg://zoom.us/join?confno=1&pwd=abc"},
        {"https://zoom.us/j/1?pwd=", "zoommtg://zoom.us/join?confno=1&pwd="},
        {"https://zoom.us/j/1?pwd=a+b", "zoommtg://zoom.us/join?confno=1&pwd=a+b"},
        {"https://zoom.us/j/1?pwd=%61%3D", "zoommtg://zoom.us/join?confno=1&pwd=a="},
        {"https://zoom.us/j/1?pwd=a%23b", "zoommtg://zoom.us/join?confno=1&pwd=a#b"},
        {"https://zoom.us/j/1?pwd=a%20b", std::nullopt},
        {"https://zoom.us/%6A/%31", "zoommtg://zoom.us/join?confno=1"},
        {"https://zoom.us//j//1/success", "zoommtg://zoom.us/join?confno=1"},
        {"https://zoom.us/my/name", std::nullopt},
        {"https://zoom.us/j/12a", std::nullopt},
        {"https://zoom.us/j/%D9%A1", std::nullopt},
        {"https://zoom.us/wc/j/1", std::nullopt},
        {"https://Teams.Microsoft.com/meet/1?p=%41#x", "msteams://Teams.Microsoft.com/meet/1?p=%41#x"},
        {"https://facetime.apple.com/join#v=1", "https://facetime.apple.com/join#v=1"},
        {"https://meet.google.com/abc", std::nullopt},
    };

    for (const auto &[link, native] : rows)
        EXPECT_EQ(textOf(classify(url(link))->nativeURL), native) << link;
}

TEST(JoinLinkDetectorTest, unwrapsTheLinksOfTheRedirectorOnce)
{
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"https://www.google.com/url?q=https%3A%2F%2Fa.b%2Fj%3Fpwd%3Da&sa=D", "https://a.b/j?pwd=a"},
        {"https://google.com/url?sa=D&q=https://a.b", "https://a.b"},
        {"https://notgoogle.com/url?q=https://a.b", "https://a.b"},
        {"https://google.com/%75rl?q=https://a.b", "https://a.b"},
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
        {"earliest known service",
         {},
         {},
         "https://a.b https://webex.com/a https://zoom.us/j/1",
         "https://webex.com/a"},
        {"plain URL over a service", "https://a.b", "https://zoom.us/j/2", "https://zoom.us/j/1",
         "https://a.b"},
        {"location before notes", {}, "https://a.b", "https://zoom.us/j/1", "https://a.b"},
        {"URL with a scheme in capitals", "HTTPS://a.b", {}, "https://c.d", "https://c.d"},
        {"link inside of the URL", "x:https://a.b.", {}, {}, "https://a.b"},
        {"wrapped",
         {},
         {},
         "https://a.b https://google.com/url?q=https://zoom.us/j/1",
         "https://zoom.us/j/1"},
        {"wrapped http", "https://google.com/url?q=http://a", {}, {}, "https://google.com/url?q=http://a"},
        {"wrapped without a host", {}, "https://google.com/url?q=https:a", "https://a.b", "https://a.b"},
    };

    for (const auto &row : rows) {
        const auto link = detect(row.url, row.location, row.notes);
        EXPECT_EQ(link ? std::optional(link->webURL.text()) : std::nullopt, row.webURL) << row.trap;
    }
}

struct EveryApp : InstalledApps
{
    bool isInstalled(Service) const override { return true; }
};

TEST(JoinLinkDetectorTest, opensTheAppsLinkWhereItIsWantedAndThereIsOne)
{
    for (const auto &[link, opened] : {std::pair("https://zoom.us/j/1", "zoommtg://zoom.us/join?confno=1"),
                                       {"https://zoom.us/my/name", "https://zoom.us/my/name"},
                                       {"https://teams.live.com/meet/1", "https://teams.live.com/meet/1"}})
        EXPECT_EQ(linkToOpen(classify(url(link)).value(), {Service::teams}, EveryApp()).text(), opened);
}

} // namespace

} // namespace mivora
