#pragma once

#include <QByteArray>
#include <QString>

class QFile;

namespace kelo {

/// The 32 bytes of an Ed25519 public key in base64 (RFC 8032); empty when \a base64 is no such key.
QByteArray decodePublicKey(const QString &base64);

/// The 64 bytes of an Ed25519 signature in base64; empty when \a base64 is none.
QByteArray decodeSignature(const QString &base64);

/// Whether \a signature was made over exactly the bytes of \a file, which is open, with the private half of
/// \a publicKey. Takes a few milliseconds a megabyte.
bool isSignedBy(QFile &file, const QByteArray &signature, const QByteArray &publicKey);

} // namespace kelo
