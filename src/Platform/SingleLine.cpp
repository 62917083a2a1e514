#include "Platform/SingleLine.h"

namespace mivora {

namespace {

/// The bidirectional overrides could make a title rearrange the rest of its line.
bool reordersTheLine(QChar c)
{
    return (c >= QChar(0x202A) && c <= QChar(0x202E)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
}

} // namespace

QString singleLine(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator || reordersTheLine(c))
            c = QLatin1Char(' ');
    }
    return text;
}

} // namespace mivora
