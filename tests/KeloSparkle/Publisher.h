#pragma once

#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

namespace kelo {

/// Everything on the side of those who publish updates: a certificate for "localhost", and keys, signatures
/// and appcasts made with the tool that maintainers use.
class Publisher final
{
public:
    /// Throws std::runtime_error when openssl or the tool fails.
    Publisher();

    /// For a server that proves to be "localhost".
    QSslConfiguration server() const;

    /// Lets this process trust that certificate, and only it.
    void trust() const;

    /// The public key of the pair \a name, which is made on first need.
    QString publicKey(const QString &name = QStringLiteral("key")) const;

    QByteArray sign(const QByteArray &content, const QString &keyName = QStringLiteral("key")) const;

    /// A feed with one item, as the tool prints it.
    QByteArray feed(const QString &version, const QByteArray &package, const QUrl &url,
                    const QByteArray &notes) const;

private:
    QByteArray tool(const QStringList &arguments) const;
    QString keyFile(const QString &name) const;
    QString file(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_folder;
};

} // namespace kelo
