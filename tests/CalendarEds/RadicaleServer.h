#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <string>

namespace support {

/// A real CalDAV server on this machine alone, and an HTTP client for it.
class RadicaleServer final
{
public:
    static bool isInstalled();

    /// The only user is "ann", with the password "secret". Throws std::runtime_error when it doesn't start.
    RadicaleServer();
    ~RadicaleServer();
    Q_DISABLE_COPY_MOVE(RadicaleServer)

    int port() const { return m_port; }

    /// Each returns whether the server agreed.
    bool makeCalendar(const QString &path);
    bool put(const QString &path, const std::string &text);

private:
    bool request(const QStringList &arguments, const QString &path, const QByteArray &body = {});

    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};

} // namespace support
