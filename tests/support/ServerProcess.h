#pragma once

#include <QByteArray>
#include <chrono>
#include <sys/types.h>
#include <vector>

namespace support {

/// A server that a test runs for itself: it is started in the constructor, tells its address when it is
/// ready, and is ended in the destructor, or by the kernel when the test itself dies.
///
/// Needs no application object.
class ServerProcess final
{
public:
    /// The file descriptor on which the server has to write its address and a line feed.
    static constexpr int addressFd = 3;

    /// Throws std::runtime_error when the program can't be run or isn't ready in time.
    explicit ServerProcess(std::vector<QByteArray> command,
                           std::chrono::milliseconds timeout = std::chrono::seconds(20));
    ~ServerProcess();
    Q_DISABLE_COPY_MOVE(ServerProcess)

    pid_t pid() const { return m_pid; }

    /// The line that the server wrote, without the line feed.
    const QByteArray &address() const { return m_address; }

private:
    pid_t m_pid = -1;
    QByteArray m_address;
};

} // namespace support
