#include "Platform/SingleLine.h"

#include <algorithm>

namespace mivora {

bool isUnsafeInLine(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator || (c >= QChar(0x202A) && c <= QChar(0x202E)) ||
           (c >= QChar(0x2066) && c <= QChar(0x2069));
}

QString singleLine(QString text)
{
    std::replace_if(text.begin(), text.end(), isUnsafeInLine, QLatin1Char(' '));
    return text;
}

} // namespace mivora
