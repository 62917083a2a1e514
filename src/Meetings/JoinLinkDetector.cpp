#include "Meetings/JoinLinkDetector.h"

#include "Meetings/BoundedText.h"
#include "Meetings/LinkScanner.h"

#include <algorithm>
#include <array>
#include <string>

// A text is read once, link by link, and reading stops at the first link of a known service.
namespace mivora {

namespace {

constexpr std::string_view webScheme = "https";

// The public hosts of the services' meeting links, in one place. All are in lower case.
constexpr std::string_view zoomHost = "zoom.us";
/// Links in Google Calendar's texts lead through "/url" on hosts that end in this.
constexpr std::string_view googleRedirectHost = "google.com";

enum class Subdomains { refused, included };

/// Links on `host` belong to `service` when `acceptsPath` agrees with their decoded path.
struct HostRule
{
    Service service;
    std::string_view host;
    Subdomains subdomains = Subdomains::refused;
    bool (*acceptsPath)(std::string_view path) = [](std::string_view) { return true; };
};

/// The first rule that fits decides; a link that fits none is a plain one.
constexpr std::array hostRules{
    HostRule{Service::zoom, zoomHost, Subdomains::included},
    HostRule{Service::meet, "meet.google.com", Subdomains::refused,
             [](std::string_view path) { return path.size() > 1; }},
    HostRule{Service::teams, "teams.microsoft.com", Subdomains::refused,
             [](std::string_view path) {
                 return path.starts_with("/l/meetup-join/") || path.starts_with("/meet/");
             }},
    HostRule{Service::teams, "teams.live.com", Subdomains::refused,
             [](std::string_view path) { return path.starts_with("/meet/"); }},
    HostRule{Service::webex, "webex.com", Subdomains::included},
    HostRule{Service::facetime, "facetime.apple.com"},
};

char asciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

std::string lowerCased(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), asciiLower);
    return lower;
}

bool isOnHost(const HostRule &rule, std::string_view host)
{
    if (host == rule.host)
        return true;
    return rule.subdomains == Subdomains::included && host.ends_with(rule.host) &&
           host[host.size() - rule.host.size() - 1] == '.';
}

Service serviceOf(const Url &link, std::string_view host)
{
    const std::string lowerHost = lowerCased(host);
    const auto rule = std::ranges::find_if(hostRules, [&](const HostRule &candidate) {
        return isOnHost(candidate, lowerHost) && candidate.acceptsPath(link.path());
    });
    return rule == hostRules.end() ? Service::other : rule->service;
}

std::optional<Url> nativeURL(Service service, const Url &link)
{
    if (service == Service::zoom)
        return zoomNativeURL(link);
    // The same link under the scheme that the Teams app registers.
    if (service == Service::teams)
        return Url::parse("msteams" + link.text().substr(webScheme.size()));
    return service == Service::facetime ? std::optional(link) : std::nullopt;
}

/// Links at the end of a sentence take its punctuation along.
std::string_view withoutTrailingPunctuation(std::string_view link)
{
    // Never npos: a match begins with a letter.
    return link.substr(0, link.find_last_not_of(".,;:!?") + 1);
}

/// The next match of `scanner` that is a URL.
std::optional<Url> nextLink(LinkScanner &scanner)
{
    while (const auto match = scanner.next()) {
        if (auto url = Url::parse(withoutTrailingPunctuation(*match)))
            return url;
    }
    return std::nullopt;
}

/// The first link of a known service in `text`, else the first link of any kind.
std::optional<JoinLink> joinLinkIn(std::string_view text)
{
    std::optional<JoinLink> plain;
    LinkScanner scanner(text);
    while (const auto url = nextLink(scanner)) {
        auto link = classify(unwrapRedirect(*url));
        if (link && link->service != Service::other)
            return link;
        if (!plain)
            plain = std::move(link);
    }
    return plain;
}

} // namespace

std::optional<JoinLink> detect(std::optional<std::string_view> url, std::optional<std::string_view> location,
                               std::optional<std::string_view> notes)
{
    for (const auto &text : {url, location, notes}) {
        if (!text)
            continue;
        if (auto link = joinLinkIn(*text))
            return link;
    }
    return std::nullopt;
}

std::vector<Url> links(std::string_view text)
{
    std::vector<Url> found;
    LinkScanner scanner(text);
    while (auto url = nextLink(scanner))
        found.push_back(std::move(*url));
    return found;
}

Url unwrapRedirect(const Url &link)
{
    const auto host = link.host();
    if (!host || !host->ends_with(googleRedirectHost) || link.path() != "/url")
        return link;
    const auto target = link.queryValue("q");
    if (!target)
        return link;
    const auto url = Url::parse(*target);
    return url && url->scheme() == webScheme ? *url : link;
}

std::optional<JoinLink> classify(const Url &link)
{
    const auto host = link.host();
    if (link.scheme() != webScheme || !host || link.text().size() > longestText)
        return std::nullopt;
    const Service service = serviceOf(link, *host);
    return JoinLink{service, link, nativeURL(service, link)};
}

std::optional<Url> zoomNativeURL(const Url &link)
{
    const std::vector<std::string> path = link.pathComponents();
    if (path.size() < 3 || path[1] != "j")
        return std::nullopt;
    // Other scripts have digits too, but a URL can hold none of them, and the number goes into one
    // undecorated.
    const std::string &number = path[2];
    if (number.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    std::string native = "zoommtg://" + std::string(zoomHost) + "/join?confno=" + number;
    // The app wants the password as it is. One that no URL can hold leaves the meeting without an app link.
    if (const auto password = link.queryValue("pwd"))
        native += "&pwd=" + *password;
    return Url::parse(native);
}

} // namespace mivora
