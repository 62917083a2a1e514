#include "Meetings/LinkScanner.h"

#include "Meetings/WhiteSpace.h"

#include <array>

// Notes are mostly text without links, and now and then a megabyte of it: a slash, which the C library finds
// many bytes at a time, is rare there, and only the rest of a link is read byte by byte, through a table.
// Every byte is looked at a bounded number of times, whatever the text holds.
namespace mivora {

namespace {

constexpr std::string_view opening = "https://";
constexpr std::size_t slashInOpening = opening.find('/');

/// The position of the first opening in `text`, or npos.
std::size_t findOpening(std::string_view text)
{
    for (std::size_t slash = text.find('/', slashInOpening); slash != std::string_view::npos;
         slash = text.find('/', slash + 1)) {
        if (text.substr(slash - slashInOpening).starts_with(opening))
            return slash - slashInOpening;
    }
    return std::string_view::npos;
}

enum class Byte : unsigned char { inLink, endsLink, mayBeginWhiteSpace };

constexpr std::array<Byte, 256> makeByteTable()
{
    std::array<Byte, 256> table{};
    for (const char c : std::string_view("<>\"'()[] \t\n\v\f\r"))
        table[static_cast<unsigned char>(c)] = Byte::endsLink;
    for (const std::string_view space : wideWhiteSpace)
        table[static_cast<unsigned char>(space.front())] = Byte::mayBeginWhiteSpace;
    return table;
}

constexpr std::array<Byte, 256> byteTable = makeByteTable();

/// The first position at or after `from` that no link can hold, or the end of `text`.
std::size_t findEnd(std::string_view text, std::size_t from)
{
    for (; from < text.size(); ++from) {
        const Byte byte = byteTable[static_cast<unsigned char>(text[from])];
        if (byte == Byte::inLink)
            continue;
        if (byte == Byte::endsLink || leadingWhiteSpace(text.substr(from)) > 0)
            return from;
    }
    return text.size();
}

} // namespace

std::optional<std::string_view> LinkScanner::next()
{
    for (std::size_t begin = findOpening(m_rest); begin != std::string_view::npos;
         begin = findOpening(m_rest)) {
        m_rest.remove_prefix(begin);
        const std::string_view link = m_rest.substr(0, findEnd(m_rest, opening.size()));
        m_rest.remove_prefix(link.size());
        if (link.size() > opening.size())
            return link;
    }
    m_rest = {};
    return std::nullopt;
}

} // namespace mivora
