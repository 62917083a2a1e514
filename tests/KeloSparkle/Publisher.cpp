#include "Publisher.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QUrl>
#include <stdexcept>

namespace kelo {

namespace {

QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + ": " + process.readAllStandardError().toStdString());
    return process.readAllStandardOutput();
}

QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("can't read " + path.toStdString());
    return file.readAll();
}

} // namespace

Publisher::Publisher()
{
    makeCertificates();
    tool({QStringLiteral("keys"), m_folder.filePath(QStringLiteral("key"))});
}

void Publisher::makeCertificates() const
{
    const auto path = [this](const char *name) { return m_folder.filePath(QLatin1String(name)); };
    const QString extensions =
        file(QStringLiteral("extensions"), "subjectAltName=DNS:localhost\nextendedKeyUsage=serverAuth\n");
    const auto openssl = [](const QString &arguments, const QStringList &more) {
        output(QStringLiteral("openssl"), arguments.split(QLatin1Char(' ')) + more);
    };
    const QString newKey =
        QStringLiteral("req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout");
    openssl(newKey, {path("ca.key"), QStringLiteral("-x509"), QStringLiteral("-days"), QStringLiteral("2"),
                     QStringLiteral("-subj"), QStringLiteral("/CN=Test authority"), QStringLiteral("-out"),
                     path("ca.pem")});
    openssl(newKey, {path("server.key"), QStringLiteral("-subj"), QStringLiteral("/CN=localhost"),
                     QStringLiteral("-out"), path("server.csr")});
    openssl(QStringLiteral("x509 -req -days 2 -CAcreateserial -in"),
            {path("server.csr"), QStringLiteral("-CA"), path("ca.pem"), QStringLiteral("-CAkey"),
             path("ca.key"), QStringLiteral("-extfile"), extensions, QStringLiteral("-out"),
             path("server.pem")});
}

QSslConfiguration Publisher::server() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(read(m_folder.filePath(QStringLiteral("server.pem")))));
    configuration.setPrivateKey(QSslKey(read(m_folder.filePath(QStringLiteral("server.key"))), QSsl::Ec));
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    return configuration;
}

void Publisher::trust() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates({QSslCertificate(read(m_folder.filePath(QStringLiteral("ca.pem"))))});
    QSslConfiguration::setDefaultConfiguration(configuration);
}

QString Publisher::publicKey(const QString &name) const
{
    return QString::fromLatin1(tool({QStringLiteral("public-key"), keyFile(name)})).trimmed();
}

QByteArray Publisher::sign(const QByteArray &content, const QString &keyName) const
{
    return tool({QStringLiteral("sign"), keyFile(keyName), file(QStringLiteral("to-sign"), content)})
        .trimmed();
}

QByteArray Publisher::feed(const Offer &offer) const
{
    const QByteArray item =
        tool({QStringLiteral("item"), keyFile(QStringLiteral("key")),
              file(QStringLiteral("package"), offer.package), QStringLiteral("--version-of"), offer.version,
              QStringLiteral("--url"), offer.url.toString(), QStringLiteral("--notes"),
              file(QStringLiteral("notes"), offer.notes), QStringLiteral("--minimum-system"),
              QStringLiteral("2.4")});
    return tool({QStringLiteral("feed"), QStringLiteral("--title"), QStringLiteral("Mivora"),
                 file(QStringLiteral("item"), item)});
}

QByteArray Publisher::tool(const QStringList &arguments) const
{
    return output(QCoreApplication::applicationDirPath() + QStringLiteral("/mivora-appcast"), arguments);
}

QString Publisher::keyFile(const QString &name) const
{
    const QString path = m_folder.filePath(name);
    if (!QFile::exists(path))
        tool({QStringLiteral("keys"), path});
    return path;
}

QString Publisher::file(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("can't write " + file.fileName().toStdString());
    return file.fileName();
}

} // namespace kelo
