#include "Platform/linux/IniValue.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace mivora::ini {

namespace {

struct Escape
{
    char letter;
    char character;
};

constexpr std::array escapes{Escape{'a', '\a'}, Escape{'b', '\b'}, Escape{'f', '\f'},
                             Escape{'n', '\n'}, Escape{'r', '\r'}, Escape{'t', '\t'},
                             Escape{'v', '\v'}, Escape{'"', '"'},  Escape{'\\', '\\'}};

constexpr QLatin1String dataStart("@ByteArray(");
constexpr QLatin1String stringStart("@String(");
constexpr QLatin1String typedEnd(")");
constexpr QLatin1String emptyList("@Invalid()");

const Escape *escapeOf(QChar character)
{
    const auto found = std::find_if(escapes.begin(), escapes.end(), [character](const Escape &escape) {
        return QLatin1Char(escape.character) == character;
    });
    return found == escapes.end() ? nullptr : &*found;
}

bool isHexDigit(QChar character)
{
    return character.unicode() < 0x80 && std::isxdigit(character.unicode());
}

bool isBlank(QChar character)
{
    return character == QLatin1Char(' ') || character == QLatin1Char('\t');
}

/// Whether UTF-8 would lose the character at \a at: half of a pair, or a byte order mark.
bool isLostInUtf8(const QString &text, qsizetype at)
{
    const QChar character = text.at(at);
    const bool followsHigh = at > 0 && text.at(at - 1).isHighSurrogate();
    const bool precedesLow = at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
    return (character.isHighSurrogate() && !precedesLow) || (character.isLowSurrogate() && !followsHigh) ||
           character.unicode() == QChar::ByteOrderMark;
}

/// \a firstEscaped is the first code that is written as a number besides the control characters.
QString escaped(const QString &text, ushort firstEscaped)
{
    QString result;
    bool afterNumber = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar character = text.at(at);
        const ushort code = character.unicode();
        const Escape *escape = escapeOf(character);
        // A number has no fixed length: a digit right behind it would be read as part of it.
        const bool asNumber = code < 0x20 || code >= firstEscaped || isLostInUtf8(text, at) ||
                              (afterNumber && isHexDigit(character));
        if (escape)
            result += QLatin1Char('\\') % QLatin1Char(escape->letter);
        else if (asNumber)
            result += QLatin1String("\\x") % QString::number(code, 16);
        else
            result += character;
        afterNumber = !escape && asNumber;
    }
    return result;
}

QString quoted(const QString &text)
{
    const QString body = escaped(text, 0xffff);
    const bool needsQuotes = body.startsWith(QLatin1Char(' ')) || body.endsWith(QLatin1Char(' ')) ||
                             std::any_of(body.begin(), body.end(), [](QChar character) {
                                 return QLatin1String("=;,#").contains(character);
                             });
    return needsQuotes ? QLatin1Char('"') % body % QLatin1Char('"') : body;
}

/// "@" begins what is no text; a text that begins with it has it twice.
QString protectedText(const QString &text)
{
    return text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') % text : text;
}

/// QSettings writes texts with a NUL as "@String(…)".
std::optional<QString> unprotectedText(const QString &item)
{
    if (!item.startsWith(QLatin1Char('@')))
        return item;
    if (item.startsWith(stringStart) && item.endsWith(typedEnd))
        return item.mid(stringStart.size()).chopped(typedEnd.size());
    return item.startsWith(QLatin1String("@@")) ? std::optional(item.mid(1)) : std::nullopt;
}

/// Splits one value into its items, without quotes and escapes.
class ValueReader
{
public:
    explicit ValueReader(const QByteArray &text) : m_text(QString::fromUtf8(text)) {}

    /// Nothing when a quote is not closed or an escape not finished.
    std::optional<QStringList> read()
    {
        while (m_at < m_text.size()) {
            const QChar character = m_text.at(m_at++);
            if (character == QLatin1Char('"'))
                m_inQuotes = !m_inQuotes;
            else if (character == QLatin1Char('\\')) {
                if (!readEscape())
                    return std::nullopt;
            } else if (m_inQuotes || !readPunctuation(character))
                append(character);
            keepBlanksSoFarIfQuoted(character);
        }
        finishItem();
        return m_inQuotes ? std::nullopt : std::optional(m_items);
    }

private:
    /// Returns whether \a character means something outside quotes. A semicolon begins a comment.
    bool readPunctuation(QChar character)
    {
        if (character == QLatin1Char(','))
            finishItem();
        else if (character == QLatin1Char(';'))
            m_at = m_text.size();
        else
            return m_item.isEmpty() && m_kept == 0 && isBlank(character);
        return true;
    }

    bool readEscape()
    {
        if (m_at == m_text.size())
            return false;
        const QChar letter = m_text.at(m_at++);
        const auto found = std::find_if(escapes.begin(), escapes.end(), [letter](const Escape &escape) {
            return QLatin1Char(escape.letter) == letter;
        });
        if (letter == QLatin1Char('x'))
            append(QChar(readNumber(16)));
        else if (letter >= QLatin1Char('0') && letter <= QLatin1Char('7')) {
            --m_at;
            append(QChar(readNumber(8)));
        } else
            append(found == escapes.end() ? letter : QLatin1Char(found->character));
        m_kept = m_item.size();
        return true;
    }

    ushort readNumber(uint base)
    {
        uint number = 0;
        for (; m_at < m_text.size(); ++m_at) {
            const int digit = isHexDigit(m_text.at(m_at)) ? QString(m_text.at(m_at)).toInt(nullptr, 16) : 16;
            if (uint(digit) >= base)
                break;
            number = number * base + uint(digit);
        }
        return static_cast<ushort>(number);
    }

    void append(QChar character) { m_item += character; }

    void keepBlanksSoFarIfQuoted(QChar character)
    {
        if (m_inQuotes || character == QLatin1Char('"'))
            m_kept = m_item.size();
    }

    /// Blanks at the end of an item are not part of it, except in quotes.
    void finishItem()
    {
        while (m_item.size() > m_kept && isBlank(m_item.back()))
            m_item.chop(1);
        m_items.append(m_item);
        m_item = QLatin1String("");
        m_kept = 0;
    }

    QString m_text;
    qsizetype m_at = 0;
    bool m_inQuotes = false;
    QString m_item{QLatin1String("")};
    qsizetype m_kept = 0;
    QStringList m_items;
};

/// The one item of a value that is no list.
std::optional<QString> singleItem(const QByteArray &text)
{
    const auto items = ValueReader(text).read();
    return items && items->size() == 1 ? std::optional(items->first()) : std::nullopt;
}

} // namespace

QByteArray encodeString(const QString &value)
{
    return quoted(protectedText(value)).toUtf8();
}

QByteArray encodeStringList(const QStringList &value)
{
    if (value.isEmpty())
        return QByteArray(emptyList.data(), emptyList.size());
    QStringList items;
    for (const QString &item : value)
        items.append(quoted(protectedText(item)));
    return items.join(QLatin1String(", ")).toUtf8();
}

QByteArray encodeData(const QByteArray &value)
{
    const QString text = dataStart % QString::fromLatin1(value) % typedEnd;
    const QString body = escaped(text, 0x7f);
    return (QLatin1Char('"') % body % QLatin1Char('"')).toUtf8();
}

std::optional<QString> decodeString(const QByteArray &text)
{
    const auto item = singleItem(text);
    return item ? unprotectedText(*item) : std::nullopt;
}

std::optional<QStringList> decodeStringList(const QByteArray &text)
{
    const auto items = ValueReader(text).read();
    if (!items)
        return std::nullopt;
    if (items->size() == 1 && items->first() == emptyList)
        return QStringList();
    QStringList result;
    for (const QString &item : *items) {
        const auto plain = unprotectedText(item);
        if (!plain)
            return std::nullopt;
        result.append(*plain);
    }
    return result;
}

std::optional<QByteArray> decodeData(const QByteArray &text)
{
    const QString whole = singleItem(text).value_or(QString());
    if (!whole.startsWith(dataStart) || !whole.endsWith(typedEnd))
        return std::nullopt;
    return whole.mid(dataStart.size(), whole.size() - dataStart.size() - typedEnd.size()).toLatin1();
}

std::optional<bool> decodeBoolean(const QByteArray &text)
{
    const QString word = decodeString(text).value_or(QString()).toLower();
    if (word == QLatin1String("true") || word == QLatin1String("yes") || word == QLatin1String("1"))
        return true;
    if (word == QLatin1String("false") || word == QLatin1String("no") || word == QLatin1String("0"))
        return false;
    return std::nullopt;
}

std::optional<qint64> decodeInteger(const QByteArray &text)
{
    bool valid = false;
    const qint64 number = decodeString(text).value_or(QString()).toLongLong(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

} // namespace mivora::ini
