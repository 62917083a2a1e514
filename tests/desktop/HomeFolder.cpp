#include "desktop/HomeFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

namespace support {

HomeFolder::HomeFolder()
{
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, m_folder.path().toLocal8Bit());
}

void HomeFolder::write(const QString &relative, const QByteArray &content, bool isProgram) const
{
    const QString file = path(relative);
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    if (!out.open(QFile::WriteOnly) || out.write(content) != content.size())
        throw std::runtime_error("can't write " + file.toStdString());
    if (isProgram)
        out.setPermissions(out.permissions() | QFile::ExeOwner | QFile::ExeUser);
}

QByteArray HomeFolder::read(const QString &relative) const
{
    QFile file(path(relative));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QString HomeFolder::busServices() const
{
    const QString name = QStringLiteral("/org.xfce.Xfconf.service");
    const QString folder = path(QStringLiteral("services"));
    QDir().mkpath(folder);
    QFile::link(QStringLiteral("/usr/share/dbus-1/services") + name, folder + name);
    return folder;
}

} // namespace support
