#include "support/PrivateBus.h"

#include <QFile>
#include <QStandardPaths>
#include <QUuid>
#include <stdexcept>

namespace support {

namespace {

QByteArray configuration(const QString &folder, const QString &serviceFolder, const QByteArray &rules)
{
    const QString services =
        serviceFolder.isEmpty()
            ? QString()
            : QStringLiteral("<servicedir>%1</servicedir>").arg(serviceFolder.toHtmlEscaped());
    return QStringLiteral(
               "<busconfig><type>session</type><listen>unix:path=%1/bus</listen><auth>EXTERNAL</auth>%2"
               "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
               "<allow eavesdrop=\"true\"/><allow own=\"*\"/>%3</policy></busconfig>")
        .arg(folder.toHtmlEscaped(), services, QString::fromUtf8(rules))
        .toUtf8();
}

QByteArray writeConfiguration(const QTemporaryDir &folder, const QString &serviceFolder,
                              const QByteArray &rules)
{
    QFile file(folder.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(configuration(folder.path(), serviceFolder, rules)) < 0)
        throw std::runtime_error("the bus configuration can't be written");
    return QFile::encodeName(file.fileName());
}

} // namespace

PrivateBus::PrivateBus(const QString &serviceFolder, const QByteArray &rules)
{
    const QByteArray file = writeConfiguration(m_folder, serviceFolder, rules);
    m_server = std::make_unique<ServerProcess>(
        std::vector<QByteArray>{"dbus-daemon", "--nofork", "--config-file=" + file,
                                "--print-address=" + QByteArray::number(ServerProcess::addressFd)});
}

PrivateBus::~PrivateBus()
{
    for (const QString &name : m_connections)
        QDBusConnection::disconnectFromBus(name);
}

bool PrivateBus::isInstalled()
{
    return !QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty();
}

QDBusConnection PrivateBus::connection()
{
    m_connections.append(QUuid::createUuid().toString());
    return QDBusConnection::connectToBus(QString::fromLocal8Bit(address()), m_connections.last());
}

} // namespace support
