#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mivora {

/// An opaque sRGB colour, 8 bits a channel.
struct Color
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Color &, const Color &) = default;

    /// Reads "#rgb", "#rrggbb" or "#rrggbbaa" (the alpha is dropped), surrounded by white space or not.
    static std::optional<Color> fromHex(std::string_view text);

    /// "#rrggbb", in lower case.
    std::string hex() const;
};

} // namespace mivora
