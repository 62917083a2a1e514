#include "ICalendar/ContentLine.h"

#include "ICalendar/CalendarText.h"

#include <QString>
#include <algorithm>
#include <cstring>

namespace mivora::ical {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c;
}

/// The position of the first of \a wanted that stands outside of quotes, or the length of \a text.
std::size_t findUnquoted(std::string_view text, std::string_view wanted)
{
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            quoted = !quoted;
        else if (!quoted && wanted.find(text[i]) != wanted.npos)
            return i;
    }
    return text.size();
}

std::string_view withoutQuotes(std::string_view text)
{
    return text.size() >= 2 && text.front() == '"' && text.back() == '"' ? text.substr(1, text.size() - 2)
                                                                         : text;
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
    } while (p < end && isBlank(*p));
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

bool isName(std::string_view text, std::string_view name)
{
    return text.size() == name.size() && std::equal(text.begin(), text.end(), name.begin(),
                                                    [](char a, char b) { return lowered(a) == lowered(b); });
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
        else if (lowered(c) != lowered(name[matched++]))
            return false;
    }
    return false;
}

ContentLine ContentLine::parse(std::string_view line)
{
    const std::size_t nameEnd = std::min(line.find_first_of(":;"), line.size());
    ContentLine parts{line.substr(0, nameEnd), {}, {}};
    std::size_t colon = nameEnd + findUnquoted(line.substr(nameEnd), ":");
    // Outlook writes TZID=tzone://Microsoft/Utc without quotes.
    while (colon != nameEnd && line.substr(std::min(colon + 1, line.size())).starts_with("//"))
        colon += 1 + findUnquoted(line.substr(colon + 1), ":");
    if (colon == line.size())
        // A quote that nobody closed: better the first colon than no value at all.
        colon = std::min(line.find(':', nameEnd), line.size());
    parts.parameters = line.substr(nameEnd, colon - nameEnd);
    parts.value = line.substr(std::min(colon + 1, line.size()));
    return parts;
}

std::string_view ContentLine::parameter(std::string_view wanted) const
{
    std::string_view rest = parameters;
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const std::string_view one = rest.substr(0, findUnquoted(rest, ";"));
        rest.remove_prefix(one.size());
        const std::size_t equals = one.find('=');
        if (equals != one.npos && isName(one.substr(0, equals), wanted))
            return withoutQuotes(one.substr(equals + 1));
    }
    return {};
}

std::string mailAddress(std::string_view text)
{
    static constexpr std::string_view scheme = "mailto:";
    text = withoutBlanks(text);
    const bool hasScheme = text.size() >= scheme.size() && isName(text.substr(0, scheme.size()), scheme);
    if (hasScheme)
        text = text.substr(scheme.size(), text.find('?') - scheme.size());
    const QByteArray decoded = hasScheme
                                   ? QByteArray::fromPercentEncoding({text.data(), qsizetype(text.size())})
                                   : QByteArray(text.data(), qsizetype(text.size()));
    return decoded.contains('@') ? QString::fromUtf8(decoded).trimmed().toLower().toStdString()
                                 : std::string();
}

std::string unescapedText(std::string_view value)
{
    std::string text;
    text.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size())
            text += value[i];
        else
            text += lowered(value[++i]) == 'n' ? '\n' : value[i];
    }
    return text;
}

} // namespace mivora::ical
