#include "Calendar/CalendarLog.h"

#include "Meetings/BoundedText.h"
#include "Platform/SingleLine.h"

#include <QString>

namespace mivora {

Q_LOGGING_CATEGORY(calendarLog, "mivora.calendar")

namespace {

QString escaped(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes)
        text += QStringLiteral("\\x%1").arg(static_cast<unsigned char>(byte), 2, 16, QLatin1Char('0'));
    return text;
}

} // namespace

std::string printable(std::string_view text)
{
    constexpr std::size_t longest = 300;
    const std::string_view start = prefix(text, longest);
    const QString decoded = QString::fromUtf8(start.data(), qsizetype(start.size()));
    const bool isValid = !decoded.contains(QChar::ReplacementCharacter);
    QString out;
    for (const QChar c : isValid ? decoded : QString::fromLatin1(start.data(), qsizetype(start.size()))) {
        if (isValid ? isUnsafeInLine(c) : c < QLatin1Char(' ') || c > QLatin1Char('~'))
            out += escaped(isValid ? QString(c).toUtf8() : QByteArray(1, c.toLatin1()));
        else
            out += c;
    }
    return out.toStdString() + (start.size() < text.size() ? "..." : "");
}

} // namespace mivora
