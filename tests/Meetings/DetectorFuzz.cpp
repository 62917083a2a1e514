#include "LinkPatternOracle.h"
#include "Meetings/JoinLinkDetector.h"
#include "Meetings/LinkScanner.h"
#include "support/Require.h"

#include <cstdint>

// Any bytes as an event's text: the scanner agrees with another implementation of its pattern, and what the
// detector makes of the matches is consistent.
namespace {

using namespace mivora;
using support::require;

void checkScanner(std::string_view text)
{
    LinkScanner scanner(text);
    for (const std::string_view expected : test::matchesOfLinkPattern(text)) {
        const auto match = scanner.next();
        require(match && match->data() == expected.data() && match->size() == expected.size(),
                "the scanner finds each match of the pattern");
    }
    require(!scanner.next(), "the scanner finds nothing else");
}

void checkLink(const Url &link)
{
    require(link.scheme() == "https" && link.host() && !link.host()->empty(), "a found link has a host");
    require(Url::parse(link.text()) == link, "a link's text is a URL");
    const auto joinLink = classify(unwrapRedirect(link));
    require(!joinLink || joinLink->webURL.scheme() == "https", "meetings are joined by https links");
    require(!joinLink || joinLink->service != Service::other || !joinLink->nativeURL,
            "plain links have no app");
}

void checkDetection(std::string_view text)
{
    bool hasLink = false;
    for (const Url &link : links(text)) {
        checkLink(link);
        hasLink = hasLink || classify(unwrapRedirect(link));
    }
    require(detect(text, {}, {}).has_value() == hasLink, "any link is enough to join by");
    require(detect({}, text, {}) == detect({}, {}, text), "each text is read by the same rules");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    checkScanner(text);
    checkDetection(text);
    if (const auto url = Url::parse(text)) {
        require(url->text() == text, "a URL's text is kept");
        url->pathComponents();
        url->queryValue("pwd");
        zoomNativeURL(*url);
    }
    return 0;
}
