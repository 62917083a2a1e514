#include "CommandLine/CommandLine.h"
#include "CommandLine/Output.h"
#include "support/Require.h"

#include <algorithm>

// Arguments, one a line: bad ones are refused in one line of plain text, and no others.
namespace {

using namespace mivora;

// A kernel gives no program more than that in one argument, and people far less.
constexpr std::size_t mostArguments = 64;

std::vector<std::string> argumentsOf(std::string_view lines)
{
    std::vector<std::string> arguments{"mivora"};
    while (!lines.empty() && arguments.size() < mostArguments) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        // An argument ends at its first zero.
        arguments.emplace_back(std::string(lines.substr(0, end)).c_str());
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return arguments;
}

void checkRefusal(const FinishedRequest &finished)
{
    support::require(finished.exitStatus == exitBadArguments, "what is not done has bad arguments");
    support::require(finished.text.starts_with("mivora: ") && finished.text.ends_with('\n'),
                     "a refusal is a line that names the program");
    const std::string_view line(finished.text.data(), finished.text.size() - 1);
    support::require(singleLine(line) == line, "a refusal sends nothing but text to a terminal");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto arguments = argumentsOf({reinterpret_cast<const char *>(data), size});
    std::vector<const char *> pointers;
    for (const std::string &argument : arguments)
        pointers.push_back(argument.c_str());
    const Request request = parseCommandLine(int(pointers.size()), pointers.data());
    if (const auto *finished = std::get_if<FinishedRequest>(&request); finished && finished->exitStatus != 0)
        checkRefusal(*finished);
    if (const auto *settings = std::get_if<RemoteRequest>(&request))
        support::require(settings->page.empty() || settings->page == "general" ||
                             settings->page == "calendars",
                         "only pages that exist are opened");
    return 0;
}
