#pragma once

#include <QString>
#include <functional>
#include <optional>

class QObject;

namespace kelo {

/// Asks dpkg-deb for the version in the control file of the package \a path, without the epoch and the
/// Debian revision (deb-version(7)). \a done comes later, unless \a context is gone by then; nothing when
/// it is no Debian package, or the system has no dpkg-deb.
void readDebianVersion(const QString &path, QObject *context,
                       std::function<void(const std::optional<QString> &)> done);

} // namespace kelo
