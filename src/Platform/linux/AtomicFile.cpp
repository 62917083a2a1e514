#include "Platform/linux/AtomicFile.h"

#include <QFileInfo>
#include <QSaveFile>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace mivora {

namespace {

/// More than anybody's settings take; what is longer is no settings file, and would take the memory of the
/// machine.
constexpr qint64 longestFile = 4 << 20;

/// QSaveFile syncs the file; the new name of it is only on disk when its folder is synced too.
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
    const QString folder = QFileInfo(path).absolutePath();
    if (auto error = makeFolder(folder))
        return error;
    // Unbuffered and synced by hand: QSaveFile::commit() overlooks what goes wrong when it empties its
    // buffer, and would put half a file in place on a full disk.
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                         file.write(content) == content.size() && ::fsync(file.handle()) == 0;
    if (!written || !file.commit())
        return path % QLatin1String(": ") % file.errorString();
    syncFolder(QFileInfo(QFileInfo(path).canonicalFilePath()).absolutePath());
    return std::nullopt;
}

std::variant<QByteArray, ReadError> readFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QByteArray();
    if (!info.isFile())
        return ReadError{path % QLatin1String(": is no regular file")};
    if (info.size() > longestFile)
        return ReadError{path % QLatin1String(": is too large")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ReadError{path % QLatin1String(": ") % file.errorString()};
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return ReadError{path % QLatin1String(": ") % file.errorString()};
    return content;
}

} // namespace mivora
