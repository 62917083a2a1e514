#pragma once

#include <QDBusConnection>
#include <functional>

class QObject;

namespace kelo {

/// Asks NetworkManager (org.freedesktop.NetworkManager, property Metered) whether traffic costs money.
/// \a answer comes later, unless \a context is gone by then; false where there is no such service.
void askWhetherMetered(const QDBusConnection &systemBus, QObject *context, std::function<void(bool)> answer);

} // namespace kelo
