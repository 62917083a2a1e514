#pragma once

#include <QByteArray>
#include <QHash>
#include <QSslServer>
#include <QStringList>
#include <chrono>

namespace kelo {

/// What the server says to one path.
struct Answer
{
    int status = 200;
    QByteArray body = {};
    /// Of a redirect.
    QByteArray location = {};
    /// Says nothing at all, and keeps the connection.
    bool isSilent = false;
    /// Stands for the usual head of the answer, with the empty line behind it or without.
    QByteArray head = {};
    /// Sent again and again after the body, until the client has enough.
    QByteArray endless = {};
    /// The time between two of these.
    std::chrono::milliseconds pause{0};
};

/// A web server on the loopback address, with a real certificate. Runs in the event loop of the test.
class HttpsServer final : public QSslServer
{
    Q_OBJECT

public:
    explicit HttpsServer(const QSslConfiguration &configuration);

    /// The https address of \a path on this server.
    QUrl address(const QString &path) const;

    QHash<QString, Answer> answers;
    /// The paths asked for so far.
    QStringList requests;

private:
    void serve(QTcpSocket *socket);
    void answer(QTcpSocket *socket, const QByteArray &request);
    static QByteArray headOf(const Answer &answer);
    static void sendForEver(QTcpSocket *socket, const Answer &answer);
};

} // namespace kelo
