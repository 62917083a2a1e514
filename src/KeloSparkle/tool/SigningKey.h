#pragma once

#include <QByteArray>
#include <QString>

namespace kelo {

/// The private key that packages are signed with, in a file of one line: base64 of its 64 bytes (the seed and
/// the public key, as libsodium has it).
class SigningKey final
{
public:
    /// Makes a new pair and writes it to \a path, readable by its owner only. Throws std::runtime_error when
    /// there is a file already: a lost key can't be had back.
    static SigningKey make(const QString &path);

    /// Throws std::runtime_error when there is no key in \a path.
    static SigningKey read(const QString &path);

    /// Base64, for "SUPublicEDKey".
    QByteArray publicKey() const;

    /// Base64 of the Ed25519 signature over all of \a content.
    QByteArray sign(const QByteArray &content) const;

private:
    QByteArray m_secret;
};

} // namespace kelo
