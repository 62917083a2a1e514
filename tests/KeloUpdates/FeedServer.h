#pragma once

#include <QFile>
#include <QHash>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace kelo {

struct Answer
{
    int status = 200;
    QByteArray body = {};
    QByteArray header = {};
};

/// A publisher of updates with a web server that proves to be "localhost"; keys and signatures are made as
/// docs/releasing.md tells maintainers to.
class FeedServer final : public QSslServer
{
public:
    FeedServer()
    {
        openssl(
            "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost "
            "-addext subjectAltName=DNS:localhost -keyout tls.key -out tls.pem");
        openssl("genpkey -algorithm ed25519 -out key.pem");
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate());
        configuration.setPrivateKey(QSslKey(openssl("pkey -in tls.key"), QSsl::Ec));
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        setSslConfiguration(configuration);
        connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
            while (QTcpSocket *socket = nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
        });
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
    }

    /// Lets this process trust the server's certificate, and only it.
    void trust() const
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates({certificate()});
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    /// The https address of the feed.
    QUrl address() const { return QUrl(QStringLiteral("https://localhost:%1/feed").arg(serverPort())); }

    QString publicKey() const
    {
        return QString::fromLatin1(openssl("pkey -in key.pem -pubout -outform DER").right(32).toBase64());
    }

    QByteArray sign(const QByteArray &document) const
    {
        QFile file(m_folder.filePath(QStringLiteral("document")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(document) == document.size());
        file.close();
        return openssl("pkeyutl -sign -rawin -inkey key.pem -in document");
    }

    /// Answers with the document and its signature.
    void publish(const QByteArray &document)
    {
        answers = {{"/feed", {.body = document}}, {"/feed.sig", {.body = sign(document)}}};
    }

    void publishVersion(const QByteArray &version)
    {
        publish("{\"version\": \"" + version +
                "\", \"date\": \"2026-12-24\", \"notes\": \"<b>Faster</b>\", \"page\": "
                "\"https://kelo.example/get\"}");
    }

    QHash<QByteArray, Answer> answers;
    /// The paths asked for so far.
    QList<QByteArray> requests;

private:
    QByteArray openssl(const char *arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral("openssl"), QString::fromLatin1(arguments).split(QLatin1Char(' ')));
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << arguments;
        return process.readAllStandardOutput();
    }

    QSslCertificate certificate() const { return QSslCertificate(openssl("x509 -in tls.pem")); }

    void answer(QTcpSocket &socket)
    {
        requests << socket.readAll().split(' ').value(1);
        const Answer answer = answers.value(requests.last(), Answer{.status = 404});
        socket.write("HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n" +
                     answer.header + "\r\n" + answer.body);
        socket.disconnectFromHost();
    }

    QTemporaryDir m_folder;
};

} // namespace kelo
