#include "KeloSparkle/tool/SigningKey.h"

#include <QFile>
#include <fcntl.h>
#include <sodium.h>
#include <stdexcept>
#include <unistd.h>

namespace kelo {

namespace {

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

void writePrivateFile(const QString &path, const QByteArray &content)
{
    const int file =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        throw std::runtime_error("can't make " + path.toStdString() +
                                 ": it exists, or its folder can't be written");
    const bool isWritten =
        ::write(file, content.constData(), std::size_t(content.size())) == content.size() &&
        ::fsync(file) == 0;
    ::close(file);
    if (!isWritten)
        throw std::runtime_error("can't write " + path.toStdString());
}

} // namespace

SigningKey SigningKey::make(const QString &path)
{
    if (sodium_init() < 0)
        throw std::runtime_error("libsodium can't be used");
    SigningKey key;
    key.m_secret.resize(crypto_sign_SECRETKEYBYTES);
    QByteArray publicKey(crypto_sign_PUBLICKEYBYTES, 0);
    crypto_sign_keypair(bytes(publicKey), bytes(key.m_secret));
    writePrivateFile(path, key.m_secret.toBase64() + '\n');
    return key;
}

SigningKey SigningKey::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("can't read " + path.toStdString());
    SigningKey key;
    key.m_secret = QByteArray::fromBase64(file.read(1024).trimmed());
    if (key.m_secret.size() != crypto_sign_SECRETKEYBYTES || sodium_init() < 0)
        throw std::runtime_error(path.toStdString() + " holds no signing key");
    return key;
}

QByteArray SigningKey::publicKey() const
{
    return m_secret.right(crypto_sign_PUBLICKEYBYTES).toBase64();
}

QByteArray SigningKey::sign(const QByteArray &content) const
{
    QByteArray signature(crypto_sign_BYTES, 0);
    crypto_sign_detached(bytes(signature), nullptr, bytes(content), std::size_t(content.size()),
                         bytes(m_secret));
    return signature.toBase64();
}

} // namespace kelo
