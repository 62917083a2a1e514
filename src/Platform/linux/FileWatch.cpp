#include "Platform/linux/FileWatch.h"

#include <QFileInfo>
#include <chrono>

namespace mivora {

namespace {

/// Long enough for a program that empties the file and then fills it.
constexpr std::chrono::milliseconds burstLength(50);

/// The folder of `path`, or the nearest one above it that is there. Empty for an empty path.
QString nearestFolder(const QString &path)
{
    QString folder = QFileInfo(path).absolutePath();
    while (!folder.isEmpty() && !QFileInfo(folder).isDir())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

} // namespace

FileWatch::FileWatch(const QString &path, QObject *parent) : QObject(parent), m_path(path)
{
    m_burst.setSingleShot(true);
    m_burst.setInterval(burstLength);
    // A timer that is not restarted also ends in a folder that never comes to rest.
    const auto start = [this] {
        if (!m_burst.isActive())
            m_burst.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, start);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, start);
    connect(&m_burst, &QTimer::timeout, this, [this] {
        watchAgain();
        Q_EMIT changed();
    });
    watchAgain();
}

/// The file itself for writes in place, its folder for a file that is created or replaced by renaming. A link
/// is followed, since the file behind it may be replaced in its own folder.
QStringList FileWatch::pathsToWatch() const
{
    QStringList paths{nearestFolder(m_path)};
    const QFileInfo target(QFileInfo(m_path).canonicalFilePath());
    if (target.isReadable())
        paths << target.filePath() << target.absolutePath();
    paths.removeDuplicates();
    return paths;
}

void FileWatch::watchAgain()
{
    const QStringList wanted = pathsToWatch();
    // A file that was replaced under its name is still watched as the old one, so files are watched anew.
    QStringList outdated = m_watcher.files();
    for (const QString &folder : m_watcher.directories()) {
        if (!wanted.contains(folder))
            outdated.append(folder);
    }
    if (!outdated.isEmpty())
        m_watcher.removePaths(outdated);
    m_watcher.addPaths(wanted);
}

} // namespace mivora
