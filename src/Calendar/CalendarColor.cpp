#include "Calendar/CalendarColor.h"

#include <QColor>
#include <QRegularExpression>
#include <algorithm>

namespace mivora {

namespace {

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
    // The one name of CSS that Qt, whose table is SVG's, doesn't have.
    const QString name = QString::fromStdString(text);
    const bool isMissing = name.compare(QLatin1String("rebeccapurple"), Qt::CaseInsensitive) == 0;
    const QColor named = isMissing ? QColor(0x66, 0x33, 0x99) : QColor::fromString(name);
    if (!named.isValid() || named.alpha() == 0)
        return std::nullopt;
    return Color{std::uint8_t(named.red()), std::uint8_t(named.green()), std::uint8_t(named.blue())};
}

} // namespace mivora
