#include "Calendar/TitleText.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace mivora {

namespace {

// A hundred combining marks on a letter are still one character: the length in bytes needs a limit of its
// own.
constexpr std::size_t maxTitleBytes = 8192;

constexpr QChar ellipsis(0x2026);

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool breaksLine(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
}

/// The start of \a text, at most \a maxBytes long, without half a character (UTF-8) at its end.
std::string_view prefix(std::string_view text, std::size_t maxBytes)
{
    if (text.size() <= maxBytes)
        return text;
    while (maxBytes > 0 && (static_cast<unsigned char>(text[maxBytes]) & 0xC0) == 0x80)
        --maxBytes;
    return text.substr(0, maxBytes);
}

/// The length of the first \a count characters of \a text in code units, or that of the whole text when it
/// has no more than these.
qsizetype lengthOfCharacters(const QString &text, qsizetype count)
{
    if (count >= text.size())
        return text.size();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype i = 0; i < count; ++i) {
        if (finder.toNextBoundary() < 0)
            return text.size();
    }
    return finder.position();
}

QString trimmedBlanks(QStringView text)
{
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return text.mid(first - text.begin(), last - first).toString();
}

} // namespace

QString titleText(std::string_view title)
{
    const std::string_view start = prefix(title, maxTitleBytes);
    QString text = QString::fromUtf8(start.data(), qsizetype(start.size()));
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    std::replace_if(text.begin(), text.end(), breaksLine, QLatin1Char(' '));
    const qsizetype length = lengthOfCharacters(text, maxTitleCharacters);
    if (length == text.size() && start.size() == title.size())
        return text;
    return trimmedBlanks(QStringView(text).left(length)) + ellipsis;
}

QString shortenedTitle(const QString &title, int width)
{
    if (lengthOfCharacters(title, std::max(width, 0)) == title.size())
        return title;
    if (width < 2)
        return ellipsis;
    return trimmedBlanks(QStringView(title).left(lengthOfCharacters(title, width - 1))) + ellipsis;
}

} // namespace mivora
