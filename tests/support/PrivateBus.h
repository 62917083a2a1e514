#pragma once

#include "support/ServerProcess.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <memory>

namespace support {

/// A D-Bus session bus that belongs to one test. Nothing is activated on it unless a folder of service files
/// is given, so the services of the person who runs the tests are out of reach.
class PrivateBus final
{
public:
    /// \a rules are further elements of the bus's policy. Throws std::runtime_error when the daemon can't be
    /// started.
    explicit PrivateBus(const QString &serviceFolder = {}, const QByteArray &rules = {});

    /// Whether dbus-daemon can be run at all; a test that needs a bus is skipped without it.
    static bool isInstalled();

    /// For the DBUS_SESSION_BUS_ADDRESS variable.
    QByteArray address() const { return m_server->address(); }

    /// Another connection with each call, so that a test can play both sides. It is closed when the bus ends.
    QDBusConnection connection();

    /// Makes this the session bus of the process (before it first used one) and of the programs that it
    /// starts from now on.
    void enter() const { qputenv("DBUS_SESSION_BUS_ADDRESS", address()); }

    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ServerProcess> m_server;
    QStringList m_connections;
};

} // namespace support
