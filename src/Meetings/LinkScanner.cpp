#include "Meetings/LinkScanner.h"

#include "Meetings/WhiteSpace.h"

#include <array>

// Notes are mostly text without links, and now and then a megabyte of it. The search for the scheme therefore
// works on blocks of a fixed size, in a loop without branches that compilers turn into vector instructions;
// the rest of a link is read byte by byte through a table. Every byte is looked at a bounded number of times.
namespace mivora {

namespace {

constexpr std::string_view opening = "https://";
constexpr std::size_t colonInOpening = opening.find(':');
constexpr std::size_t blockSize = 128;

/// Whether the colon of an opening may stand in the first \a blockSize bytes of \a text, which is at least
/// two bytes longer. The colon and the second slash are rare in notes, and two comparisons are cheaper than
/// eight.
bool mayHoldColonOfOpening(const char *text)
{
    unsigned char found = 0;
    for (std::size_t i = 0; i < blockSize; ++i)
        found |= (text[i] == ':') & (text[i + 2] == '/');
    return found != 0;
}

/// The position at or after \a from of the next colon that is worth a closer look, or npos.
std::size_t findColon(std::string_view text, std::size_t from)
{
    while (text.size() - from >= blockSize + 2 && !mayHoldColonOfOpening(text.data() + from))
        from += blockSize;
    return text.find(':', from);
}

/// The position of the first opening that lies in \a text at or after \a from, or npos.
std::size_t findOpening(std::string_view text, std::size_t from)
{
    std::size_t colon = from;
    while ((colon = findColon(text, colon)) != std::string_view::npos) {
        const std::size_t begin = colon - colonInOpening;
        if (colon >= from + colonInOpening && text.substr(begin).starts_with(opening))
            return begin;
        ++colon;
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

/// The first position at or after \a from that no link can hold, or the end of \a text.
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
    while (m_position < m_text.size()) {
        const std::size_t begin = findOpening(m_text, m_position);
        if (begin == std::string_view::npos)
            break;
        const std::size_t body = begin + opening.size();
        m_position = findEnd(m_text, body);
        if (m_position > body)
            return m_text.substr(begin, m_position - begin);
    }
    m_position = m_text.size();
    return std::nullopt;
}

} // namespace mivora
