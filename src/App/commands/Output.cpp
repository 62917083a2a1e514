#include "App/commands/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace mivora {

void print(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return;
    if (errno != EPIPE)
        complain(QStringLiteral("stdout: ") + qt_error_string());
    std::exit(1);
}

void complain(std::string_view message)
{
    const std::string line = "mivora: " + singleLine(message) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string singleLine(std::string_view text)
{
    return singleLine(QString::fromUtf8(text.data(), qsizetype(text.size()))).toStdString();
}

QByteArray printableJson(const QByteArray &json)
{
    QString text;
    text.reserve(json.size());
    for (const QChar c : QString::fromUtf8(json)) {
        if (c != QLatin1Char('\n') && isUnsafeInLine(c))
            text += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            text += c;
    }
    return text.toUtf8();
}

} // namespace mivora
