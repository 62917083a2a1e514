#pragma once

#include <QString>

namespace kelo {

/// Where the desktop portal is found on the session bus.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace kelo
