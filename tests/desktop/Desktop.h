#pragma once

#include "desktop/HomeFolder.h"
#include "support/PrivateBus.h"

#include <QProcess>
#include <QRect>
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

/// A desktop on the process's X display: session bus, window manager, task bar, and a terminal that has the
/// keyboard and writes what is typed into a file.
class Desktop final
{
public:
    /// Whether the programs that it is made of can be run.
    static bool isInstalled();

    /// Returns when the terminal has the keyboard; throws std::runtime_error when that never happens.
    Desktop();
    ~Desktop();
    Q_DISABLE_COPY_MOVE(Desktop)

    /// The lines typed into the terminal so far.
    QByteArray typed() const;

    /// Plays the user through the X server and returns when xdotool is done; events happen meanwhile.
    bool act(const QStringList &xdotoolArguments);
    /// The same without waiting.
    std::unique_ptr<QProcess> startActing(const QStringList &xdotoolArguments);

private:
    void start(const QString &program, const QStringList &arguments);

    HomeFolder m_home;
    PrivateBus m_bus;
    std::vector<std::unique_ptr<QProcess>> m_programs;
};

} // namespace support
