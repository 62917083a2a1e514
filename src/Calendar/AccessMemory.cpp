#include "Calendar/AccessMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace mivora {

namespace {

constexpr char allowedText[] = "allowed\n";

bool makePrivateFolder(const QString &path)
{
    const bool isNew = !QFileInfo::exists(path);
    const bool isThere = QDir().mkpath(path);
    if (isNew && isThere)
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return isThere;
}

} // namespace

AccessMemory::AccessMemory(const QString &path, Permission permission, QObject *parent)
    : QObject(parent), m_path(path), m_permission(permission)
{
    if (m_permission == Permission::given) {
        m_isAllowed = true;
        return;
    }
    // The folder is watched, not the file: that comes, goes and is replaced.
    const QString folder = QFileInfo(m_path).absolutePath();
    if (makePrivateFolder(folder))
        m_watcher.addPath(folder);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &AccessMemory::readFile);
    readFile();
}

QString AccessMemory::defaultPath()
{
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state))
        state = QDir::home().filePath(QStringLiteral(".local/state"));
    return QDir(state).filePath(QStringLiteral("mivora/access"));
}

bool AccessMemory::allow()
{
    setAllowed(true);
    if (m_permission == Permission::given)
        return true;
    makePrivateFolder(QFileInfo(m_path).absolutePath());
    QSaveFile file(m_path);
    // Without a buffer: commit() overlooks that it can't be emptied, and would put an empty file in place.
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(allowedText) == qint64(sizeof allowedText - 1) && file.commit();
}

bool AccessMemory::reset()
{
    if (m_permission == Permission::given)
        return true;
    const bool isGone = QFile::remove(m_path) || !QFileInfo::exists(m_path);
    if (isGone)
        setAllowed(false);
    return isGone;
}

void AccessMemory::readFile()
{
    QFile file(m_path);
    setAllowed(file.open(QIODevice::ReadOnly) && file.read(sizeof allowedText) == allowedText);
}

void AccessMemory::setAllowed(bool isAllowed)
{
    if (m_isAllowed == isAllowed)
        return;
    m_isAllowed = isAllowed;
    Q_EMIT changed();
}

} // namespace mivora
