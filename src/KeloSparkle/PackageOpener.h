#pragma once

#include <QDBusConnection>
#include <QString>
#include <functional>

namespace kelo {

using PackageOpened = std::function<void(bool)>;

/// Hands the file to the program that the desktop has for its kind: the package installer. \a done is called
/// later on the main thread; false when there is none.
void openPackage(const QString &path, PackageOpened done);

/// Shows the file in the file manager (org.freedesktop.FileManager1). \a done as above, or at once
/// where there is no bus.
void showInFileManager(const QDBusConnection &bus, const QString &path, PackageOpened done);

} // namespace kelo
