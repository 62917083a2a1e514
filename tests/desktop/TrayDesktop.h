#pragma once

#include "desktop/HomeFolder.h"
#include "support/PrivateBus.h"

#include <QProcess>
#include <QTimeZone>
#include <memory>
#include <vector>

namespace support {

/// A desktop with a status area on the process's X display: session bus, window manager, and a panel that
/// holds nothing but a task bar and the status area. It is the home of the programs that are started in it.
class TrayDesktop final
{
public:
    /// Whether the programs that it is made of can be run.
    static bool isInstalled();

    /// Returns when the status area takes items; throws std::runtime_error when that never happens.
    TrayDesktop();
    ~TrayDesktop();
    Q_DISABLE_COPY_MOVE(TrayDesktop)

    /// A path below the home folder.
    QString path(const QString &relative) const { return m_home.path(relative); }

    /// Writes a file below the home folder, with the folders above it.
    void write(const QString &relative, const QByteArray &content, bool isProgram = false) const
    {
        m_home.write(relative, content, isProgram);
    }

    QByteArray read(const QString &relative) const { return m_home.read(relative); }

    /// The environment that programs are started with.
    QProcessEnvironment environment() const;

    /// A connection as a program of the desktop has it.
    QDBusConnection connection() { return m_bus.connection(); }

    /// What the status area shows: the bus names of its items.
    QStringList items() const;

    void killPanel();
    void startPanel();
    /// A frozen panel keeps its names on the bus and answers nothing.
    void freezePanel();
    void thawPanel();

    /// Plays the user through the X server and returns when xdotool is done; events happen meanwhile.
    bool act(const QStringList &xdotoolArguments);

private:
    void start(const QString &program, const QStringList &arguments);

    HomeFolder m_home;
    PrivateBus m_bus;
    QDBusConnection m_connection;
    std::vector<std::unique_ptr<QProcess>> m_programs;
    QProcess m_panel;
};

} // namespace support
