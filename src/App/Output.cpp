#include "App/Output.h"

#include <QString>
#include <cstdio>
#include <cstdlib>

namespace mivora {

void print(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        std::exit(1);
}

void complain(std::string_view message)
{
    const std::string line = "mivora: " + singleLine(message) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string singleLine(std::string_view text)
{
    QString line = QString::fromUtf8(text.data(), qsizetype(text.size()));
    for (QChar &c : line) {
        // Bidirectional overrides could make a title rearrange the rest of the line.
        const bool reordersTheLine =
            (c >= QChar(0x202A) && c <= QChar(0x202E)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator || reordersTheLine)
            c = QLatin1Char(' ');
    }
    return line.toStdString();
}

} // namespace mivora
