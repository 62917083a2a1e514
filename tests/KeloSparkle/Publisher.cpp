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
    const QString newCertificate = QStringLiteral(
        "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost "
        "-addext subjectAltName=DNS:localhost -addext extendedKeyUsage=serverAuth");
    output(QStringLiteral("openssl"),
           newCertificate.split(QLatin1Char(' ')) +
               QStringList{QStringLiteral("-keyout"), m_folder.filePath(QStringLiteral("server.key")),
                           QStringLiteral("-out"), m_folder.filePath(QStringLiteral("server.pem"))});
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
    configuration.setCaCertificates({QSslCertificate(read(m_folder.filePath(QStringLiteral("server.pem"))))});
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

QByteArray Publisher::feed(const QString &version, const QByteArray &package, const QUrl &url,
                           const QByteArray &notes) const
{
    const QByteArray item = tool({QStringLiteral("item"), keyFile(QStringLiteral("key")),
                                  file(QStringLiteral("package"), package), QStringLiteral("--version-of"),
                                  version, QStringLiteral("--url"), url.toString(), QStringLiteral("--notes"),
                                  file(QStringLiteral("notes"), notes), QStringLiteral("--minimum-system"),
                                  QStringLiteral("2.4")});
    return tool({QStringLiteral("feed"), file(QStringLiteral("item"), item)});
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
