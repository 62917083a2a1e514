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

} // namespace

bool RadicaleServer::isInstalled()
{
    return !QStandardPaths::findExecutable(server).isEmpty() &&
           !QStandardPaths::findExecutable(client).isEmpty();
}

RadicaleServer::RadicaleServer() : m_port(freePort())
{
    QFile file(m_folder.filePath(QStringLiteral("config")));
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("no configuration for Radicale");
    file.write("[server]\nhosts = 127.0.0.1:" + QByteArray::number(m_port) +
               "\n[auth]\ntype = none\n[rights]\ntype = authenticated\n[storage]\nfilesystem_folder = " +
               m_folder.path().toUtf8() + "/collections\n");
    file.close();
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(server, {QStringLiteral("--config"), file.fileName()});
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

bool RadicaleServer::remove(const QString &path)
{
    return request({QStringLiteral("-X"), QStringLiteral("DELETE")}, path);
}

bool RadicaleServer::request(const QStringList &arguments, const QString &path, const QByteArray &body)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    const QString address = QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
    process.start(client, QStringList{QStringLiteral("-sf"), QStringLiteral("-m"), QStringLiteral("20"),
                                      QStringLiteral("-u"), QStringLiteral("ann:"), address} +
                              arguments);
    process.write(body);
    process.closeWriteChannel();
    return process.waitForFinished(30'000) && process.exitCode() == 0;
}

} // namespace support
