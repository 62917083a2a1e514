#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace mivora {

/// Finds what looks like a link in a text: every longest, non-overlapping match of
/// `https://[^\s<>"'()\[\]]+`, where \s is Unicode white space.
///
/// Bytes that are no valid UTF-8 are no white space and so belong to the match, as a replacement character
/// would.
class LinkScanner
{
public:
    /// Scans `text`, which must outlive the scanner.
    explicit LinkScanner(std::string_view text) : m_rest(text) {}

    /// The next match, or nothing at the end of the text.
    std::optional<std::string_view> next();

private:
    std::string_view m_rest;
};

} // namespace mivora
