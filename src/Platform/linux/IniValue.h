#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>

/// Values in the INI dialect of QSettings: quoted strings with C escapes, lists separated by commas, `@…(…)`
/// for what is no text. A value is one line here; QSettings would let a missing quote swallow the rest of the
/// file.
namespace mivora::ini {

QByteArray encodeString(const QString &value);
/// An empty list is "@Invalid()", since nothing at all is a list of one empty string.
QByteArray encodeStringList(const QStringList &value);
QByteArray encodeData(const QByteArray &value);

// Each gives nothing when the text is broken or stands for a value of another type.

std::optional<QString> decodeString(const QByteArray &text);
/// A single string is a list of one.
std::optional<QStringList> decodeStringList(const QByteArray &text);
std::optional<QByteArray> decodeData(const QByteArray &text);
/// "true", "yes" and "1", or "false", "no" and "0", in any case.
std::optional<bool> decodeBoolean(const QByteArray &text);
/// A decimal number of 64 bits.
std::optional<qint64> decodeInteger(const QByteArray &text);

} // namespace mivora::ini
