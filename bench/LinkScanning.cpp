#define PCRE2_CODE_UNIT_WIDTH 8
#include "Meetings/JoinLinkDetector.h"
#include "Meetings/LinkScanner.h"

#include <benchmark/benchmark.h>
#include <pcre2.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Each kind of text is read for two purposes. Finding matches: the scanner ("match_own"), PCRE2's
// just-in-time compiler ("match_pcre2"), and what memory allows: the search for a byte that isn't there
// ("match_memchr"). Finding links, which are parsed as well: `links` ("links_own") and the same on top of
// PCRE2 ("links_pcre2").
namespace {

std::string repeated(std::string_view unit, std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += unit;
    return text;
}

constexpr std::size_t textSize = 1 << 20;

const std::string plainNotes =
    repeated("Agenda for this week: what shipped, what did not, who helps whom. Bring the numbers, "
             "think about the hiring plan \u2013 and please read the minutes beforehand.\n\n",
             textSize);

const std::string notesWithLinks = repeated(
    "Ada Lovelace is inviting you to a scheduled meeting.\n\nJoin:\n"
    "https://us02web.zoom.us/j/89012345678?pwd=QWxhZGRpbjpvcGVuIHNlc2FtZQ.1\n\n"
    "Meeting ID: 890 1234 5678\nPasscode: 271828\n\nOne tap mobile\n+16465588656,,89012345678# US (New "
    "York)\n+13017158592,,89012345678# US (Washington DC)\n\nDial by your location\n"
    "\u2022 +1 646 558 8656 US (New York)\n\u2022 +1 301 715 8592 US (Washington DC)\n\u2022 +49 69 3807 "
    "9883 Germany\n\nFind your local number: https://us02web.zoom.us/u/kdXyZAbCdE\n",
    textSize);

const std::string hardText =
    repeated("https:/ https:/ hhhhttps https:// http://x hhttps:/h https:\xe2\x80\xaf// ", textSize);

// `https://[^\s<>"'()\[\]]+` in the form that PCRE2 is quickest with, two to three times as quick as with
// this one: bytes instead of characters, so that Unicode's white space is spelt out; first the colon, which
// is rarer than an "h".
constexpr char fastPattern[] =
    R"(:(?<=https:)//(?:[^\t-\r <>"'()\[\]\xc2\xe1\xe2\xe3]++|\xc2(?![\x85\xa0])|\xe1(?!\x9a\x80))"
    R"(|\xe2(?!\x80[\x80-\x8a\xa8\xa9\xaf]|\x81\x9f)|\xe3(?!\x80\x80))++)";
constexpr std::size_t beforeColon = 5;

class Pattern
{
public:
    Pattern()
    {
        const auto *pattern = reinterpret_cast<PCRE2_SPTR>(fastPattern);
        int error = 0;
        PCRE2_SIZE offset = 0;
        m_code.reset(pcre2_compile(pattern, PCRE2_ZERO_TERMINATED, 0, &error, &offset, nullptr));
        if (!m_code || pcre2_jit_compile(m_code.get(), PCRE2_JIT_COMPLETE) != 0)
            std::abort();
        m_match.reset(pcre2_match_data_create_from_pattern(m_code.get(), nullptr));
    }

    /// Calls `found` with every match in `text`.
    template<typename Found> void forEachMatch(std::string_view text, Found found) const
    {
        const auto *subject = reinterpret_cast<PCRE2_SPTR>(text.data());
        const PCRE2_SIZE *bounds = pcre2_get_ovector_pointer(m_match.get());
        PCRE2_SIZE from = 0;
        while (pcre2_jit_match(m_code.get(), subject, text.size(), from, 0, m_match.get(), nullptr) > 0) {
            found(text.substr(bounds[0] - beforeColon, bounds[1] - bounds[0] + beforeColon));
            from = bounds[1];
        }
    }

private:
    struct Free
    {
        void operator()(pcre2_code *code) const { pcre2_code_free(code); }

        void operator()(pcre2_match_data *match) const { pcre2_match_data_free(match); }
    };

    std::unique_ptr<pcre2_code, Free> m_code;
    std::unique_ptr<pcre2_match_data, Free> m_match;
};

const Pattern &pattern()
{
    static const Pattern compiled;
    return compiled;
}

std::size_t matchesOfScanner(std::string_view text)
{
    std::size_t matches = 0;
    mivora::LinkScanner scanner(text);
    while (scanner.next())
        ++matches;
    return matches;
}

std::size_t matchesOfPcre2(std::string_view text)
{
    std::size_t matches = 0;
    pattern().forEachMatch(text, [&](std::string_view) { ++matches; });
    return matches;
}

std::size_t memchrOfNothing(std::string_view text)
{
    return std::memchr(text.data(), '\0', text.size()) ? 1 : 0;
}

std::size_t links(std::string_view text)
{
    return mivora::links(text).size();
}

std::size_t linksOfPcre2(std::string_view text)
{
    std::vector<mivora::Url> found;
    pattern().forEachMatch(text, [&](std::string_view match) {
        if (auto url = mivora::Url::parse(match.substr(0, match.find_last_not_of(".,;:!?") + 1)))
            found.push_back(std::move(*url));
    });
    return found.size();
}

void run(benchmark::State &state, std::size_t (*count)(std::string_view), const std::string &text)
{
    std::size_t matches = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(matches = count(text));
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(text.size()));
    state.counters["found"] = double(matches);
}

BENCHMARK_CAPTURE(run, plain_match_own, matchesOfScanner, plainNotes);
BENCHMARK_CAPTURE(run, plain_match_pcre2, matchesOfPcre2, plainNotes);
BENCHMARK_CAPTURE(run, plain_match_memchr, memchrOfNothing, plainNotes);
BENCHMARK_CAPTURE(run, plain_links_own, links, plainNotes);
BENCHMARK_CAPTURE(run, plain_links_pcre2, linksOfPcre2, plainNotes);
BENCHMARK_CAPTURE(run, notes_match_own, matchesOfScanner, notesWithLinks);
BENCHMARK_CAPTURE(run, notes_match_pcre2, matchesOfPcre2, notesWithLinks);
BENCHMARK_CAPTURE(run, notes_match_memchr, memchrOfNothing, notesWithLinks);
BENCHMARK_CAPTURE(run, notes_links_own, links, notesWithLinks);
BENCHMARK_CAPTURE(run, notes_links_pcre2, linksOfPcre2, notesWithLinks);
BENCHMARK_CAPTURE(run, hard_match_own, matchesOfScanner, hardText);
BENCHMARK_CAPTURE(run, hard_match_pcre2, matchesOfPcre2, hardText);
BENCHMARK_CAPTURE(run, hard_match_memchr, memchrOfNothing, hardText);
BENCHMARK_CAPTURE(run, hard_links_own, links, hardText);
BENCHMARK_CAPTURE(run, hard_links_pcre2, linksOfPcre2, hardText);

} // namespace

BENCHMARK_MAIN();
