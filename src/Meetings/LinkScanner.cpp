#include "Meetings/LinkScanner.h"

#include "Meetings/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <experimental/simd>

// Notes are mostly text without links, and now and then a megabyte of it. The search for the scheme therefore
// compares many bytes at once, and only a rare pair of the scheme's bytes; the rest of a link is read byte by
// byte through a table. Every byte is looked at a bounded number of times, whatever the text holds.
namespace mivora {

namespace {

namespace simd = std::experimental;

using Bytes = simd::native_simd<char>;

constexpr std::string_view opening = "https://";
constexpr std::size_t colonInOpening = opening.find(':');
constexpr std::size_t slashAfterColon = 2;
constexpr std::size_t stride = 4 * Bytes::size();

/// Where \a text may have the colon of an opening: a colon with a slash as the second byte after it. That
/// pair is rare in notes, and even among things that nearly are links.
Bytes::mask_type colonsOfOpenings(const char *text)
{
    return Bytes(text, simd::element_aligned) == ':' &&
           Bytes(text + slashAfterColon, simd::element_aligned) == '/';
}

bool anyColonInStride(const char *text)
{
    constexpr std::size_t size = Bytes::size();
    return any_of((colonsOfOpenings(text) || colonsOfOpenings(text + size)) ||
                  (colonsOfOpenings(text + 2 * size) || colonsOfOpenings(text + 3 * size)));
}

/// Whether colons can be looked for in the \a length bytes of \a text from \a at on.
bool hasRoom(std::string_view text, std::size_t at, std::size_t length)
{
    return text.size() - at >= length + slashAfterColon;
}

/// The position of the opening that begins at or after \a from and whose colon is the first among the bytes
/// from \a at on, or npos.
std::size_t openingWithColonIn(std::string_view text, std::size_t at, std::size_t from)
{
    for (auto colons = colonsOfOpenings(text.data() + at); any_of(colons);) {
        const auto first = find_first_set(colons);
        const std::size_t colon = at + std::size_t(first);
        if (colon >= from + colonInOpening && text.substr(colon - colonInOpening).starts_with(opening))
            return colon - colonInOpening;
        colons[first] = false;
    }
    return std::string_view::npos;
}

/// The position of the first opening that lies in \a text at or after \a from, or npos.
std::size_t findOpening(std::string_view text, std::size_t from)
{
    std::size_t at = from;
    while (true) {
        while (hasRoom(text, at, stride) && !anyColonInStride(text.data() + at))
            at += stride;
        if (!hasRoom(text, at, Bytes::size()))
            break;
        if (const std::size_t begin = openingWithColonIn(text, at, from); begin != std::string_view::npos)
            return begin;
        at += Bytes::size();
    }
    // The rest is too short for many bytes at a time; an opening with its colon there may begin before it.
    return text.find(opening, at - std::min(colonInOpening, at - from));
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
