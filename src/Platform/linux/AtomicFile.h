#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace mivora {

/// Makes the folder `path` with those above it, unless it is there. Returns what went wrong.
std::optional<QString> makeFolder(const QString &path);

/// Replaces the content of `path` in one step and brings it to disk, so that neither a crash nor a power cut
/// leaves a part of it. Missing folders are made; where `path` is a link, the file behind it is replaced.
/// Returns what went wrong; the old content is then still there.
std::optional<QString> replaceFile(const QString &path, const QByteArray &content);

} // namespace mivora
