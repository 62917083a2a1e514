#include "HttpsServer.h"

#include <QSslConfiguration>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <stdexcept>

namespace kelo {

HttpsServer::HttpsServer(const QSslConfiguration &configuration)
{
    setSslConfiguration(configuration);
    connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *socket = nextPendingConnection())
            serve(socket);
    });
    if (!listen(QHostAddress::LocalHost))
        throw std::runtime_error("no port to listen on");
}

QUrl HttpsServer::address(const QString &path) const
{
    return QUrl(QStringLiteral("https://localhost:%1%2").arg(serverPort()).arg(path));
}

void HttpsServer::serve(QTcpSocket *socket)
{
    socket->setParent(this);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    const auto read = [this, socket, request = QByteArray()]() mutable {
        request += socket->readAll();
        if (request.endsWith("\r\n\r\n"))
            answer(socket, std::exchange(request, {}));
    };
    connect(socket, &QTcpSocket::readyRead, socket, read);
}

void HttpsServer::answer(QTcpSocket *socket, const QByteArray &request)
{
    const QString path = QString::fromLatin1(request.split(' ').value(1));
    requests << path;
    const Answer answer = answers.value(path, Answer{.status = 404});
    if (answer.isSilent)
        return;
    socket->write((answer.head.isEmpty() ? headOf(answer) : answer.head) + answer.body);
    if (answer.endless.isEmpty())
        socket->disconnectFromHost();
    else
        sendForEver(socket, answer);
}

QByteArray HttpsServer::headOf(const Answer &answer)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n";
    if (!answer.location.isEmpty())
        head += "Location: " + answer.location + "\r\n";
    return head + "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n\r\n";
}

void HttpsServer::sendForEver(QTcpSocket *socket, const Answer &answer)
{
    constexpr qint64 mostWaiting = 256 * 1024;
    auto *timer = new QTimer(socket);
    connect(timer, &QTimer::timeout, socket, [socket, endless = answer.endless] {
        if (socket->bytesToWrite() < mostWaiting)
            socket->write(endless);
    });
    timer->start(answer.pause);
}

} // namespace kelo
