#include "App/commands/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace mivora {

void print(const QByteArray &text)
{
    const auto length = std::size_t(text.size());
    if (std::fwrite(text.data(), 1, length, stdout) == length && std::fflush(stdout) == 0)
        return;
    if (errno != EPIPE)
        complain(QStringLiteral("stdout: ") + qt_error_string());
    std::exit(1);
}

void complain(const QString &message)
{
    std::fprintf(stderr, "mivora: %s\n", qUtf8Printable(singleLine(message)));
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
