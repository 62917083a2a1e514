#pragma once

#include <QString>

namespace kelo {

/// Where org.freedesktop.portal.GlobalShortcuts is found on the session bus.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

} // namespace kelo
