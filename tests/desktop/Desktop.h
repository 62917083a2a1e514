#pragma once

#include "support/PrivateBus.h"

#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace support {

/// Lets events happen until \a isTrue; false when that takes longer than \a timeout.
bool waitFor(const std::function<bool()> &isTrue,
             std::chrono::milliseconds timeout = std::chrono::seconds(10));

/// Lets events happen for a while.
void waitFor(std::chrono::milliseconds time);

/// A desktop on the process's X display: session bus, window manager, and a panel along the upper edge with a
/// status area and a task bar. It is the home of this process and of the programs that are started in it.
class Desktop final
{
public:
    /// Whether the programs that it is made of can be run.
    static bool isInstalled();

    /// Returns when the panel stands and takes items; throws std::runtime_error when that never happens.
    Desktop();
    ~Desktop();
    Q_DISABLE_COPY_MOVE(Desktop)

    /// A path below the home folder, which is removed with its last content.
    QString path(const QString &relative) const { return m_home.filePath(relative); }

    /// Writes a file below the home folder, with the folders above it; throws std::runtime_error when it
    /// can't.
    void write(const QString &relative, const QByteArray &content, bool isProgram = false) const;
    /// Empty when there is no such file.
    QByteArray read(const QString &relative) const;

    /// A connection as a program of the desktop has it.
    QDBusConnection connection() { return m_bus.connection(); }

    /// What the status area shows: the bus names of its items.
    QStringList items() const;

    void killPanel();
    void startPanel();
    /// A frozen panel keeps its names on the bus and answers nothing.
    void freezePanel();
    void thawPanel();

    /// Opens a window that writes what is typed into the file "typed", and returns when it has the keyboard.
    void startTerminal();

    /// Plays the user through the X server and returns when xdotool is done; events happen meanwhile.
    bool act(const QStringList &xdotoolArguments);
    /// The same without waiting.
    std::unique_ptr<QProcess> startActing(const QStringList &xdotoolArguments);

private:
    QString busServices() const;
    void start(const QString &program, const QStringList &arguments);

    QTemporaryDir m_home;
    PrivateBus m_bus;
    QDBusConnection m_connection;
    std::vector<std::unique_ptr<QProcess>> m_programs;
    QProcess m_panel;
};

} // namespace support
