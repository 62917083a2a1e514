#include "Calendar/folder/CalendarRoots.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace mivora {

namespace {

std::vector<std::string> splitAtColons(const QByteArray &list)
{
    std::vector<std::string> paths;
    for (const QByteArray &path : list.split(':')) {
        if (!path.isEmpty())
            paths.push_back(absolutePath(path.toStdString()));
    }
    return paths;
}

std::string encoded(const QString &path)
{
    return absolutePath(QFile::encodeName(path).toStdString());
}

} // namespace

std::string absolutePath(const std::string &path)
{
    const QString decoded = QFile::decodeName(QByteArray::fromStdString(path));
    return QFile::encodeName(QDir::cleanPath(QDir::current().absoluteFilePath(decoded))).toStdString();
}

std::vector<std::string> calendarRoots(const std::optional<std::string> &chosen)
{
    if (chosen)
        return {absolutePath(*chosen)};
    if (const QByteArray list = qgetenv("MIVORA_CALENDARS"); !list.isEmpty())
        return splitAtColons(list);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {encoded(QDir::home().filePath(QStringLiteral(".calendars"))),
            encoded(QDir(data).filePath(QStringLiteral("calendars")))};
}

} // namespace mivora
