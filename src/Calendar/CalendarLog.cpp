#include "Calendar/CalendarLog.h"

#include <QString>

namespace mivora {

Q_LOGGING_CATEGORY(calendarLog, "mivora.calendar")

namespace {

bool isValidUtf8(std::string_view text)
{
    const QString decoded = QString::fromUtf8(text.data(), qsizetype(text.size()));
    return !decoded.contains(QChar::ReplacementCharacter);
}

void appendEscaped(std::string &out, unsigned char c)
{
    constexpr char digits[] = "0123456789abcdef";
    out += "\\x";
    out += digits[c >> 4];
    out += digits[c & 15];
}

} // namespace

std::string printable(std::string_view text)
{
    constexpr std::size_t longest = 300;
    const bool isCut = text.size() > longest;
    text = text.substr(0, longest);
    const bool escapesAll = !isValidUtf8(text);
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f || (escapesAll && byte >= 0x80))
            appendEscaped(out, byte);
        else
            out += c;
    }
    return isCut ? out + "..." : out;
}

} // namespace mivora
