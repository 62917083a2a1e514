#pragma once

#include <string>
#include <string_view>

/// The lines of iCalendar text (RFC 5545, 3.1): folded over several lines, with parameters that may be
/// quoted; and the texts in them.
namespace mivora::ical {

/// Takes the next whole line, continuations included, off the front of `rest`, and returns it still folded.
/// The line ends are CRLF or LF; the one at the end of the line is part of it.
std::string_view takeLine(std::string_view &rest);

/// `line` in one piece, without line ends. `buffer` holds the text when it had to be put together.
std::string_view unfolded(std::string_view line, std::string &buffer);

/// Whether the line, folded or not, belongs to the property `name`.
bool hasName(std::string_view line, std::string_view name);

/// A line in its parts; all of them point into it, or into the buffer that it was unfolded to.
struct ContentLine
{
    /// From the first ";" on, as written; empty when there are none.
    std::string_view parameters;
    std::string_view value;

    /// `line` may be folded; `buffer` is for that.
    static ContentLine parse(std::string_view line, std::string &buffer);

    /// The value of the first parameter `name`, without quotes; empty when there is none.
    std::string_view parameter(std::string_view name) const;
};

/// Calls `visit` with each line of a component, which is given without its BEGIN and END. Lines of components
/// within it are left out.
template<typename Visit> void forEachLine(std::string_view component, Visit visit)
{
    int nested = 0;
    while (!component.empty()) {
        const std::string_view line = takeLine(component);
        if (hasName(line, "BEGIN"))
            ++nested;
        else if (hasName(line, "END"))
            nested -= nested > 0;
        else if (nested == 0)
            visit(line);
    }
}

/// A TEXT value (RFC 5545, 3.3.11) without its escapes, and without NUL bytes.
std::string unescapedText(std::string_view value);

/// `c`, in lower case where it is an ASCII letter.
constexpr char asciiLowered(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c;
}

/// Whether `text` is `name`, or begins with it, upper and lower case of ASCII letters being the same.
bool isName(std::string_view text, std::string_view name);
bool startsWithName(std::string_view text, std::string_view name);

std::string_view withoutBlanks(std::string_view text);

/// Takes what stands before the next `separator` off the front of `rest`, without the blanks around it.
std::string_view takePart(std::string_view &rest, char separator);

} // namespace mivora::ical
