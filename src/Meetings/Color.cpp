#include "Meetings/Color.h"

#include "Meetings/WhiteSpace.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace mivora {

std::optional<Color> Color::fromHex(std::string_view text)
{
    text = trimmed(text);
    if (!text.starts_with('#'))
        return std::nullopt;
    std::string digits(text.substr(1));
    // A digit of the short form stands for two equal ones.
    if (digits.size() == 3)
        digits = {digits[0], digits[0], digits[1], digits[1], digits[2], digits[2]};
    if (digits.size() != 6 && digits.size() != 8)
        return std::nullopt;
    std::array<std::uint8_t, 4> channels{};
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const char *end = digits.data() + i + 2;
        const auto [stop, error] = std::from_chars(end - 2, end, channels[i / 2], 16);
        if (error != std::errc() || stop != end)
            return std::nullopt;
    }
    return Color{channels[0], channels[1], channels[2]};
}

std::string Color::hex() const
{
    std::array<char, sizeof "#rrggbb"> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", red, green, blue);
    return text.data();
}

} // namespace mivora
