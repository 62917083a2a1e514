#include "Platform/linux/AtomicFile.h"

#include <QFileInfo>
#include <QTemporaryFile>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace mivora {

namespace {

/// The new name of a file is only on disk when its folder is synced too.
void syncFolder(const QString &folder)
{
    const int file = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    ::fsync(file);
    ::close(file);
}

} // namespace

std::optional<QString> makeFolder(const QString &path)
{
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(path).toStdString(), error);
    if (!error)
        return std::nullopt;
    return path % QLatin1String(": ") % qt_error_string(error.value());
}

std::optional<QString> replaceFile(const QString &path, const QByteArray &content)
{
    const QFileInfo before(path);
    const QString target = before.exists()      ? before.canonicalFilePath()
                           : before.isSymLink() ? before.symLinkTarget()
                                                : before.absoluteFilePath();
    const QString folder = QFileInfo(target).absolutePath();
    if (auto error = makeFolder(folder))
        return error;
    // QSaveFile overlooks what goes wrong when it empties its buffer, and puts an empty file in place on a
    // full disk.
    QTemporaryFile file(target % QLatin1String(".XXXXXX"));
    const bool isReplaced =
        file.open() && (!before.exists() || file.setPermissions(before.permissions())) &&
        file.write(content) == content.size() && file.flush() && ::fsync(file.handle()) == 0 &&
        std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(target).constData()) ==
            0;
    if (!isReplaced)
        return path % QLatin1String(": ") %
               (file.error() == QFile::NoError ? qt_error_string() : file.errorString());
    file.setAutoRemove(false);
    syncFolder(folder);
    return std::nullopt;
}

} // namespace mivora
