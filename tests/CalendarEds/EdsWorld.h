#pragma once

#include "support/PrivateBus.h"

#include <QTemporaryDir>
#include <QtGlobal>
#include <optional>

namespace support {

/// Evolution Data Server for one test program: the real one, on a bus and in a home of its own. Its programs
/// are gone when this is.
class EdsWorld final
{
public:
    static constexpr const char *calendarName = "org.gnome.evolution.dataserver.Calendar8";
    static constexpr const char *sourcesName = "org.gnome.evolution.dataserver.Sources5";

    /// Whether it can be run here.
    static bool isInstalled();

    struct Setup
    {
        /// Put before the servers' command lines: a program that starts them, or doesn't.
        QString wrapper = {};
        /// Further elements of the bus's policy.
        QByteArray busRules = {};
    };

    /// Becomes the environment of this process and of those that it starts.
    explicit EdsWorld(const Setup &setup = {{}, {}});
    ~EdsWorld();
    Q_DISABLE_COPY_MOVE(EdsWorld)

    /// A source as the server stores it; before the server is first used.
    void writeSource(const QString &id, const QByteArray &text) const;

    QString path(const QString &relative) const { return m_home.filePath(relative); }

    PrivateBus &bus() { return *m_bus; }

    /// The process that owns a name on the bus; nothing when nobody does.
    std::optional<pid_t> processOf(const char *name) const;

    /// Every process of the server that runs now: those that own names, and their children.
    std::vector<pid_t> processes() const;

private:
    void writeServices(const QString &wrapper) const;

    QTemporaryDir m_home;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QDBusConnection> m_connection;
};

} // namespace support
