#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What an event says may be of any length; what a meeting carries of it is shown, compared and sent on the
/// bus many times a minute, and is bounded.
namespace mivora {

/// The most bytes of a title and of a link. Every HTTP program takes links up to here (RFC 9110, 4.1), and
/// no panel shows a title half as long.
inline constexpr std::size_t longestText = 8192;

/// The start of `text` (UTF-8), at most `maxBytes` long, without half a character at its end.
constexpr std::string_view prefix(std::string_view text, std::size_t maxBytes)
{
    if (text.size() <= maxBytes)
        return text;
    while (maxBytes > 0 && (static_cast<unsigned char>(text[maxBytes]) & 0xC0) == 0x80)
        --maxBytes;
    return text.substr(0, maxBytes);
}

/// `text`, cut at longestText and ended by "…" when it is longer.
inline std::string boundedText(std::string_view text)
{
    std::string bounded(prefix(text, longestText));
    if (bounded.size() < text.size())
        bounded.append("…");
    return bounded;
}

} // namespace mivora
