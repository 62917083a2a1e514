#include "MeetingTexts/TitleText.h"

#include "Meetings/BoundedText.h"
#include "Platform/SystemLog.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace mivora {

namespace {

constexpr QChar ellipsis(0x2026);

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

/// The length of the first `count` characters of `text` in code units, or that of the whole text when it
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

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
}

std::string composed(std::string_view text)
{
    return QString::fromUtf8(text).normalized(QString::NormalizationForm_C).toStdString();
}

} // namespace

QString titleText(std::string_view title)
{
    // A hundred combining marks on a letter are still one character: bytes need a limit of their own.
    const std::string_view start = prefix(title, longestText);
    QString text = QString::fromUtf8(start);
    text = singleLine(text.replace(QLatin1String("\r\n"), QLatin1String(" ")));
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

bool titleSortsBefore(std::string_view left, std::string_view right)
{
    // UTF-8 sorts by bytes as by scalar values; ASCII is its own composed form.
    if (isAscii(left) && isAscii(right))
        return left < right;
    return composed(left) < composed(right);
}

bool startsBefore(const Meeting &left, const Meeting &right)
{
    if (left.start != right.start)
        return left.start < right.start;
    return titleSortsBefore(left.title, right.title);
}

} // namespace mivora
