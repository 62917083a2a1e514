#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

/// White space is Unicode's White_Space property throughout: a no-break space counts, a zero-width space does
/// not.
///
/// Texts are UTF-8, not necessarily valid. Looking for the encoded characters is still exact, also after a
/// broken or cut-off sequence: the first byte of a character never continues another one.
namespace mivora {

/// Every White_Space character outside of ASCII.
inline constexpr std::array<std::string_view, 19> wideWhiteSpace{
    "\u0085", "\u00a0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006",
    "\u2007", "\u2008", "\u2009", "\u200a", "\u2028", "\u2029", "\u202f", "\u205f", "\u3000"};

constexpr bool isAsciiWhiteSpace(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// The length in bytes of the white-space character that `text` begins with, or ends with; 0 when it is
/// another.
constexpr std::size_t leadingWhiteSpace(std::string_view text)
{
    if (!text.empty() && isAsciiWhiteSpace(text.front()))
        return 1;
    const auto space =
        std::ranges::find_if(wideWhiteSpace, [&](auto wide) { return text.starts_with(wide); });
    return space == wideWhiteSpace.end() ? 0 : space->size();
}

constexpr std::size_t trailingWhiteSpace(std::string_view text)
{
    if (!text.empty() && isAsciiWhiteSpace(text.back()))
        return 1;
    const auto space = std::ranges::find_if(wideWhiteSpace, [&](auto wide) { return text.ends_with(wide); });
    return space == wideWhiteSpace.end() ? 0 : space->size();
}

/// `text` without the white space at both of its ends.
constexpr std::string_view trimmed(std::string_view text)
{
    while (const std::size_t length = leadingWhiteSpace(text))
        text.remove_prefix(length);
    while (const std::size_t length = trailingWhiteSpace(text))
        text.remove_suffix(length);
    return text;
}

} // namespace mivora
