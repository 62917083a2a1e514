#include "CalendarFolder/CalendarRoots.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>

namespace mivora {

namespace {

QStringList usualFolders()
{
    if (const QByteArray list = qgetenv("MIVORA_CALENDARS"); !list.isEmpty())
        return QFile::decodeName(list).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {QDir::home().filePath(QStringLiteral(".calendars")),
            QDir(data).filePath(QStringLiteral("calendars"))};
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString prefixOf(const QString &path, const QStringList &paths)
{
    const auto hasSameName = [&](const QString &other) {
        return other != path && nameOf(other) == nameOf(path);
    };
    const bool isUnique = std::none_of(paths.begin(), paths.end(), hasSameName);
    return (isUnique ? nameOf(path) : path) + QLatin1Char(':');
}

} // namespace

std::vector<CalendarRoot> calendarRoots(const std::vector<std::string> &chosen)
{
    QStringList paths;
    for (const std::string &path : chosen)
        paths << absolutePath(QFile::decodeName(QByteArray::fromStdString(path)));
    const QString plain = paths.value(0, QDir::home().filePath(QStringLiteral(".calendars")));
    if (paths.isEmpty())
        for (const QString &path : usualFolders())
            paths << absolutePath(path);
    std::vector<CalendarRoot> roots;
    for (const QString &path : paths)
        roots.push_back({QFile::encodeName(path).toStdString(),
                         path == plain ? std::string() : prefixOf(path, paths).toStdString()});
    return roots;
}

} // namespace mivora
