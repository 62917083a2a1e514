#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>

namespace mivora {

/// Makes the folder \a path with those above it, unless it is there. Returns what went wrong.
std::optional<QString> makeFolder(const QString &path);

/// Replaces the content of \a path in one step and brings it to disk, so that neither a crash nor a power cut
/// leaves a part of it. Missing folders are made. Returns what went wrong; the old content is then still
/// there.
std::optional<QString> replaceFile(const QString &path, const QByteArray &content);

/// Why a file could not be read.
struct ReadError
{
    QString reason;
};

/// The content of \a path, empty when there is no such file. Only regular files are read, others could block,
/// and only those of at most 4 MiB.
std::variant<QByteArray, ReadError> readFile(const QString &path);

} // namespace mivora
