#pragma once

#include "support/ServerProcess.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUuid>

namespace support {

/// A D-Bus session bus that belongs to one test. Nothing is activated on it unless a folder of service files
/// is given, so the services of the person who runs the tests are out of reach.
class PrivateBus final
{
public:
    /// Throws std::runtime_error when the daemon can't be started.
    explicit PrivateBus(const QString &serviceFolder = {})
        : m_serviceFolder(serviceFolder.isEmpty() ? m_folder.path() : serviceFolder),
          m_server(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                    QStringLiteral("--config-file=") + writeConfiguration({})})
    {
    }

    ~PrivateBus()
    {
        for (const QString &name : m_connections)
            QDBusConnection::disconnectFromBus(name);
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// For the DBUS_SESSION_BUS_ADDRESS variable.
    QByteArray address() const { return m_server.address(); }

    /// Another connection with each call, so that a test can play both sides. It is closed when the bus ends.
    QDBusConnection connection()
    {
        m_connections.append(QUuid::createUuid().toString());
        return QDBusConnection::connectToBus(QString::fromLocal8Bit(address()), m_connections.last());
    }

    /// Makes this the session bus of the process (before it first used one) and of the programs that it
    /// starts from now on.
    void enter() const { qputenv("DBUS_SESSION_BUS_ADDRESS", address()); }

    /// Has the daemon look at its services anew, as after an installation, and gives its policy `rules` as
    /// further elements.
    void reload(const QByteArray &rules = {})
    {
        writeConfiguration(rules);
        const QString name = QStringLiteral("org.freedesktop.DBus");
        connection().call(QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"), name,
                                                         QStringLiteral("ReloadConfig")));
    }

private:
    QString writeConfiguration(const QByteArray &rules) const
    {
        const QString text =
            QStringLiteral(
                "<busconfig><type>session</type><listen>unix:path=%1/bus</listen><auth>EXTERNAL</auth>"
                "<servicedir>%2</servicedir><policy context=\"default\">"
                "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
                "<allow own=\"*\"/>%3</policy></busconfig>")
                .arg(m_folder.path(), m_serviceFolder, QString::fromUtf8(rules));
        QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
        if (!file.open(QFile::WriteOnly) || file.write(text.toUtf8()) < 0)
            throw std::runtime_error("the bus configuration can't be written");
        return file.fileName();
    }

    QTemporaryDir m_folder;
    QString m_serviceFolder;
    ServerProcess m_server;
    QStringList m_connections;
};

} // namespace support
