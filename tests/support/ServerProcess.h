#pragma once

#include <QProcess>
#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>

namespace support {

/// A server that a test runs for itself. It ends with this object, or with the test's process when that dies.
/// Needs no application object.
class ServerProcess final
{
public:
    /// The program writes its address, and a line feed, to standard output when it is ready. Throws
    /// std::runtime_error when it can't be run or isn't ready in time.
    ServerProcess(const QString &program, const QStringList &arguments)
    {
        constexpr int patience = 20'000;
        m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(program, arguments, QProcess::ReadOnly);
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(patience))
                throw std::runtime_error(program.toStdString() + " did not start");
        }
        m_address = m_process.readLine().trimmed();
    }

    ~ServerProcess()
    {
        m_process.terminate();
        m_process.waitForFinished(2000);
    }
    Q_DISABLE_COPY_MOVE(ServerProcess)

    const QByteArray &address() const { return m_address; }

private:
    QProcess m_process;
    QByteArray m_address;
};

} // namespace support
