#include "Meetings/Color.h"

#include "Meetings/WhiteSpace.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace mivora {

namespace {

/// The number that all of \a digits is in base 16, or nothing.
std::optional<std::uint32_t> hexNumber(std::string_view digits)
{
    std::uint32_t number = 0;
    const char *end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

Color fromRgb(std::uint32_t rgb)
{
    return {std::uint8_t(rgb >> 16), std::uint8_t(rgb >> 8), std::uint8_t(rgb)};
}

/// A digit of the short form stands for two equal ones.
Color fromShortRgb(std::uint32_t rgb)
{
    return {std::uint8_t((rgb >> 8 & 0xf) * 0x11), std::uint8_t((rgb >> 4 & 0xf) * 0x11),
            std::uint8_t((rgb & 0xf) * 0x11)};
}

} // namespace

std::optional<Color> Color::fromHex(std::string_view text)
{
    text = trimmed(text);
    if (!text.starts_with('#'))
        return std::nullopt;
    const std::string_view digits = text.substr(1);
    const std::optional<std::uint32_t> number = hexNumber(digits);
    if (!number)
        return std::nullopt;
    switch (digits.size()) {
    case 3:
        return fromShortRgb(*number);
    case 6:
        return fromRgb(*number);
    case 8:
        return fromRgb(*number >> 8);
    default:
        return std::nullopt;
    }
}

std::string Color::hex() const
{
    std::array<char, sizeof "#rrggbb"> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", red, green, blue);
    return text.data();
}

} // namespace mivora
