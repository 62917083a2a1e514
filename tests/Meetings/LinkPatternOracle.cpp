#include "LinkPatternOracle.h"

#include <unicode/regex.h>
#include <unicode/utext.h>

#include <cstdlib>
#include <memory>

namespace mivora::test {

namespace {

void require(UErrorCode status)
{
    if (U_FAILURE(status))
        std::abort();
}

const icu::RegexPattern &linkPattern()
{
    static const std::unique_ptr<icu::RegexPattern> pattern = [] {
        UErrorCode status = U_ZERO_ERROR;
        UParseError where;
        std::unique_ptr<icu::RegexPattern> compiled(
            icu::RegexPattern::compile(uR"(https://[^\s<>"'()\[\]]+)", where, status));
        require(status);
        return compiled;
    }();
    return *pattern;
}

struct CloseText
{
    void operator()(UText *text) const { utext_close(text); }
};

} // namespace

std::vector<std::string_view> matchesOfLinkPattern(std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    // Native positions of a UTF-8 text are positions of bytes.
    const std::unique_ptr<UText, CloseText> utf8(
        utext_openUTF8(nullptr, text.data() ? text.data() : "", std::int64_t(text.size()), &status));
    const std::unique_ptr<icu::RegexMatcher> matcher(linkPattern().matcher(status));
    require(status);
    matcher->reset(utf8.get());
    std::vector<std::string_view> matches;
    while (matcher->find(status)) {
        const auto begin = std::size_t(matcher->start64(status));
        matches.push_back(text.substr(begin, std::size_t(matcher->end64(status)) - begin));
    }
    require(status);
    return matches;
}

} // namespace mivora::test
