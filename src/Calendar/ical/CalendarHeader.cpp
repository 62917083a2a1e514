#include "Calendar/ical/CalendarHeader.h"

#include "Calendar/ical/CivilTime.h"
#include "Calendar/ical/ContentLine.h"

#include <QColor>
#include <QRegularExpression>
#include <algorithm>

namespace mivora {

namespace {

std::string addressIn(std::string_view value)
{
    static constexpr std::string_view scheme = "mailto:";
    if (value.size() > scheme.size() && isName(value.substr(0, scheme.size()), scheme))
        value.remove_prefix(scheme.size());
    std::string address(value);
    std::transform(address.begin(), address.end(), address.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c; });
    return address;
}

/// What the header says, the better known of two properties first.
struct Header
{
    std::string name, appleName, color, appleColor, owner;
};

Header readProperties(std::string_view text)
{
    Header header;
    const std::pair<std::string_view, std::string *> properties[] = {
        {"X-WR-CALNAME", &header.appleName},
        {"NAME", &header.name},
        {"X-APPLE-CALENDAR-COLOR", &header.appleColor},
        {"COLOR", &header.color},
        {"X-WR-OWNER", &header.owner},
    };
    std::string buffer;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        for (const auto &[name, target] : properties)
            if (target->empty() && hasName(line, name))
                *target = unescapedText(withoutBlanks(ContentLine::parse(unfolded(line, buffer)).value));
    }
    return header;
}

/// "rgb(53,132,228)" or "rgba(53,132,228,0.5)", as CSS has it.
std::optional<Color> colorFromFunction(const std::string &text)
{
    static const QRegularExpression function(
        QStringLiteral(R"(^\s*rgba?\(\s*(\d{1,3})\s*,\s*(\d{1,3})\s*,\s*(\d{1,3})\s*(,[^)]*)?\)\s*$)"));
    const QRegularExpressionMatch match = function.match(QString::fromStdString(text));
    if (!match.hasMatch())
        return std::nullopt;
    const auto part = [&](int i) { return std::uint8_t(std::min(match.captured(i).toInt(), 255)); };
    return Color{part(1), part(2), part(3)};
}

} // namespace

std::optional<Color> colorFrom(const std::string &text)
{
    if (const std::optional<Color> color = Color::fromHex(text))
        return color;
    if (const std::optional<Color> color = colorFromFunction(text))
        return color;
    const QString name = QString::fromStdString(text);
    if (!QColor::isValidColor(name))
        return std::nullopt;
    const QColor named(name);
    return Color{std::uint8_t(named.red()), std::uint8_t(named.green()), std::uint8_t(named.blue())};
}

void readHeader(std::string_view text, CalendarText &calendar)
{
    const Header header = readProperties(text);
    const std::string &name = header.appleName.empty() ? header.name : header.appleName;
    if (!name.empty())
        calendar.name = name;
    calendar.color = Color::fromHex(header.appleColor);
    if (!calendar.color)
        calendar.color = colorFrom(header.color);
    if (!header.owner.empty())
        calendar.owner = addressIn(header.owner);
}

} // namespace mivora
