#include "ICalendar/ContentLine.h"

#include "ICalendar/CalendarText.h"

#include <QString>
#include <algorithm>
#include <cstring>

namespace mivora::ical {

namespace {

/// The position of the first `wanted` that stands outside of quotes, or the length of `text`.
std::size_t findUnquoted(std::string_view text, char wanted, std::size_t from = 0)
{
    bool isQuoted = false;
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && text[i] == wanted)
            return i;
    }
    return text.size();
}

} // namespace

std::string_view takeLine(std::string_view &rest)
{
    const char *const begin = rest.data();
    const char *const end = begin + rest.size();
    const char *p = begin;
    do {
        const void *found = std::memchr(p, '\n', std::size_t(end - p));
        p = found ? static_cast<const char *>(found) + 1 : end;
    } while (p < end && (*p == ' ' || *p == '\t'));
    const auto length = std::size_t(p - begin);
    rest.remove_prefix(length);
    return {begin, length};
}

std::string_view unfolded(std::string_view line, std::string &buffer)
{
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    if (line.find('\n') == line.npos)
        return line;
    buffer.clear();
    while (!line.empty()) {
        const std::size_t end = std::min(line.find('\n'), line.size());
        std::string_view piece = line.substr(0, end);
        while (piece.ends_with('\r'))
            piece.remove_suffix(1);
        buffer += piece;
        line.remove_prefix(std::min(end + 2, line.size()));
    }
    return buffer;
}

bool hasName(std::string_view line, std::string_view name)
{
    std::size_t matched = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '\n' && i + 1 < line.size())
            ++i;
        else if (c == '\r')
            continue;
        else if (matched == name.size())
            return c == ':' || c == ';';
        else if (asciiLowered(c) != asciiLowered(name[matched++]))
            return false;
    }
    return false;
}

ContentLine ContentLine::parse(std::string_view line, std::string &buffer)
{
    line = unfolded(line, buffer);
    const auto endsName = [](char c) { return c == ':' || c == ';'; };
    const auto nameEnd = std::size_t(std::find_if(line.begin(), line.end(), endsName) - line.begin());
    std::size_t colon = findUnquoted(line, ':', nameEnd);
    // Outlook writes TZID=tzone://Microsoft/Utc without quotes.
    while (colon != nameEnd && line.substr(std::min(colon + 1, line.size())).starts_with("//"))
        colon = findUnquoted(line, ':', colon + 1);
    if (colon == line.size())
        // A quote that nobody closed: better the first colon than no value at all.
        colon = std::min(line.find(':', nameEnd), line.size());
    return {line.substr(nameEnd, colon - nameEnd), line.substr(std::min(colon + 1, line.size()))};
}

std::string_view ContentLine::parameter(std::string_view name) const
{
    std::string_view rest = parameters;
    while (!rest.empty()) {
        rest.remove_prefix(1);
        std::string_view value = rest.substr(0, findUnquoted(rest, ';'));
        rest.remove_prefix(value.size());
        if (!isName(takePart(value, '='), name))
            continue;
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        return value;
    }
    return {};
}

std::string unescapedText(std::string_view value)
{
    std::string text;
    text.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size())
            text += value[i];
        else
            text += asciiLowered(value[++i]) == 'n' ? '\n' : value[i];
    }
    std::erase(text, '\0');
    return text;
}

bool isName(std::string_view text, std::string_view name)
{
    return text.size() == name.size() && startsWithName(text, name);
}

bool startsWithName(std::string_view text, std::string_view name)
{
    return text.size() >= name.size() &&
           std::equal(name.begin(), name.end(), text.begin(),
                      [](char a, char b) { return asciiLowered(a) == asciiLowered(b); });
}

std::string_view withoutBlanks(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view takePart(std::string_view &rest, char separator)
{
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    return withoutBlanks(part);
}

std::string mailAddress(std::string_view text)
{
    static constexpr std::string_view scheme = "mailto:";
    text = withoutBlanks(text);
    const bool hasScheme = startsWithName(text, scheme);
    if (hasScheme)
        text = text.substr(scheme.size(), text.find('?') - scheme.size());
    QByteArray address(text.data(), qsizetype(text.size()));
    if (hasScheme)
        address = QByteArray::fromPercentEncoding(address);
    return address.contains('@') ? QString::fromUtf8(address).toLower().toStdString() : std::string();
}

} // namespace mivora::ical
