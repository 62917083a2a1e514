#include "CalendarEds/RadicaleServer.h"

#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QThread>
#include <stdexcept>

namespace support {

namespace {

const QString server = QStringLiteral("radicale");
const QString client = QStringLiteral("curl");

int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

void write(const QByteArray &path, const QByteArray &text)
{
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        throw std::runtime_error("no configuration for Radicale");
}

} // namespace

bool RadicaleServer::isInstalled()
{
    return !QStandardPaths::findExecutable(server).isEmpty() &&
           !QStandardPaths::findExecutable(client).isEmpty();
}

RadicaleServer::RadicaleServer() : m_port(freePort())
{
    const QByteArray folder = m_folder.path().toUtf8();
    write(folder + "/users", "ann:secret\n");
    write(folder + "/config", "[server]\nhosts = 127.0.0.1:" + QByteArray::number(m_port) +
                                  "\n[auth]\ntype = htpasswd\nhtpasswd_encryption = plain\n"
                                  "htpasswd_filename = " +
                                  folder + "/users\n[rights]\ntype = authenticated\n" +
                                  "[storage]\nfilesystem_folder = " + folder + "/collections\n");
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(server, {QStringLiteral("--config"), m_folder.filePath(QStringLiteral("config"))});
    for (int attempt = 0; !request({}, QStringLiteral("/.web/")); ++attempt) {
        if (attempt == 200)
            throw std::runtime_error("Radicale doesn't start");
        QThread::msleep(100);
    }
}

RadicaleServer::~RadicaleServer()
{
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished(5000);
}

bool RadicaleServer::makeCalendar(const QString &path)
{
    return request({QStringLiteral("-X"), QStringLiteral("MKCALENDAR")}, path);
}

bool RadicaleServer::put(const QString &path, const std::string &text)
{
    return request({QStringLiteral("-X"), QStringLiteral("PUT"), QStringLiteral("-H"),
                    QStringLiteral("Content-Type: text/calendar"), QStringLiteral("--data-binary"),
                    QStringLiteral("@-")},
                   path, QByteArray::fromStdString(text));
}

bool RadicaleServer::request(const QStringList &arguments, const QString &path, const QByteArray &body)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    const QString address = QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
    process.start(client, QStringList{QStringLiteral("-sf"), QStringLiteral("-m"), QStringLiteral("20"),
                                      QStringLiteral("-u"), QStringLiteral("ann:secret"), address} +
                              arguments);
    process.write(body);
    process.closeWriteChannel();
    return process.waitForFinished(30'000) && process.exitCode() == 0;
}

} // namespace support
