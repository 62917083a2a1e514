#define PCRE2_CODE_UNIT_WIDTH 8
#include "Meetings/JoinLinkDetector.h"
#include "Meetings/LinkScanner.h"

#include <benchmark/benchmark.h>
#include <pcre2.h>

#include <cstdlib>
#include <memory>
#include <string>

// Each kind of text is read by `links`, which also parses what it finds, by the scanner alone, and by PCRE2's
// just-in-time compiler with the same pattern, which only matches.
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

class Pattern
{
public:
    Pattern()
    {
        const auto *pattern = reinterpret_cast<PCRE2_SPTR>(R"(https://[^\s<>"'()\[\]]+)");
        int error = 0;
        PCRE2_SIZE offset = 0;
        m_code.reset(
            pcre2_compile(pattern, PCRE2_ZERO_TERMINATED, PCRE2_UTF | PCRE2_UCP, &error, &offset, nullptr));
        if (!m_code || pcre2_jit_compile(m_code.get(), PCRE2_JIT_COMPLETE) != 0)
            std::abort();
        m_match.reset(pcre2_match_data_create_from_pattern(m_code.get(), nullptr));
    }

    std::size_t count(std::string_view text) const
    {
        const auto *subject = reinterpret_cast<PCRE2_SPTR>(text.data());
        std::size_t matches = 0;
        PCRE2_SIZE from = 0;
        while (pcre2_jit_match(m_code.get(), subject, text.size(), from, 0, m_match.get(), nullptr) > 0) {
            from = pcre2_get_ovector_pointer(m_match.get())[1];
            ++matches;
        }
        return matches;
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

std::size_t countWithLinks(std::string_view text)
{
    return mivora::links(text).size();
}

std::size_t countWithScanner(std::string_view text)
{
    std::size_t matches = 0;
    mivora::LinkScanner scanner(text);
    while (scanner.next())
        ++matches;
    return matches;
}

std::size_t countWithPcre2(std::string_view text)
{
    static const Pattern pattern;
    return pattern.count(text);
}

void run(benchmark::State &state, std::size_t (*count)(std::string_view), const std::string &text)
{
    std::size_t matches = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(matches = count(text));
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(text.size()));
    state.counters["matches"] = double(matches);
}

BENCHMARK_CAPTURE(run, plain_links, countWithLinks, plainNotes);
BENCHMARK_CAPTURE(run, plain_scanner, countWithScanner, plainNotes);
BENCHMARK_CAPTURE(run, plain_pcre2, countWithPcre2, plainNotes);
BENCHMARK_CAPTURE(run, notes_links, countWithLinks, notesWithLinks);
BENCHMARK_CAPTURE(run, notes_scanner, countWithScanner, notesWithLinks);
BENCHMARK_CAPTURE(run, notes_pcre2, countWithPcre2, notesWithLinks);
BENCHMARK_CAPTURE(run, hard_links, countWithLinks, hardText);
BENCHMARK_CAPTURE(run, hard_scanner, countWithScanner, hardText);
BENCHMARK_CAPTURE(run, hard_pcre2, countWithPcre2, hardText);

} // namespace

BENCHMARK_MAIN();
