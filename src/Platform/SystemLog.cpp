#include "Platform/SystemLog.h"

#include <algorithm>
#include <cstdio>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

namespace mivora {

namespace {

/// Desktops run by systemd connect standard error to the journal and say so by JOURNAL_STREAM=device:inode
/// (systemd.exec(5)). The line would then stand in the log twice.
bool standardErrorIsTheJournal()
{
    struct stat status = {};
    if (fstat(STDERR_FILENO, &status) != 0)
        return false;
    const QByteArray stream =
        QByteArray::number(quint64(status.st_dev)) + ':' + QByteArray::number(quint64(status.st_ino));
    return qgetenv("JOURNAL_STREAM") == stream;
}

} // namespace

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

void writeToSystemLog(const QString &line)
{
    const QByteArray text = singleLine(line).toUtf8();
    syslog(LOG_USER | LOG_WARNING, "%s", text.constData());
    if (!standardErrorIsTheJournal())
        std::fprintf(stderr, "%s\n", text.constData());
}

} // namespace mivora
