#include "KeloSparkle/engine/Signature.h"

#include <QFile>
#include <sodium.h>

namespace kelo {

namespace {

QByteArray decoded(const QString &base64, qsizetype length)
{
    const auto result =
        QByteArray::fromBase64Encoding(base64.trimmed().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return result && result.decoded.size() == length ? result.decoded : QByteArray();
}

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

} // namespace

QByteArray decodePublicKey(const QString &base64)
{
    return decoded(base64, crypto_sign_PUBLICKEYBYTES);
}

QByteArray decodeSignature(const QString &base64)
{
    return decoded(base64, crypto_sign_BYTES);
}

bool isSignedBy(QFile &file, const QByteArray &signature, const QByteArray &publicKey)
{
    if (signature.size() != crypto_sign_BYTES || publicKey.size() != crypto_sign_PUBLICKEYBYTES ||
        sodium_init() < 0)
        return false;
    const qint64 size = file.size();
    unsigned char *content = file.map(0, size);
    if (!content)
        return false;
    const bool isGenuine = crypto_sign_verify_detached(bytes(signature), content, static_cast<quint64>(size),
                                                       bytes(publicKey)) == 0;
    file.unmap(content);
    return isGenuine;
}

} // namespace kelo
