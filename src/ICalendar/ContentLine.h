#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The lines of iCalendar text (RFC 5545, 3.1): folded over several lines, with parameters that may be
/// quoted.
namespace mivora::ical {

/// Takes the next whole line, continuations included, off the front of \a rest, and returns it still folded.
/// The line ends are CRLF or LF; the one at the end of the line is part of it.
std::string_view takeLine(std::string_view &rest);

/// \a line in one piece, without line ends. \a buffer holds the text when it had to be put together.
std::string_view unfolded(std::string_view line, std::string &buffer);

/// Whether \a text is \a name, upper and lower case of ASCII letters being the same.
bool isName(std::string_view text, std::string_view name);

/// Whether the line, folded or not, belongs to the property \a name.
bool hasName(std::string_view line, std::string_view name);

/// An unfolded line in its parts; all of them point into it.
struct ContentLine
{
    std::string_view name;
    /// From the first ";" on, as written; empty when there are none.
    std::string_view parameters;
    std::string_view value;

    /// A line without a colon is a name alone.
    static ContentLine parse(std::string_view line);

    /// The value of the first parameter \a name, without quotes; empty when there is none.
    std::string_view parameter(std::string_view name) const;
};

/// A TEXT value (RFC 5545, 3.3.11) without its escapes.
std::string unescapedText(std::string_view value);

} // namespace mivora::ical
