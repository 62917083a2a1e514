#include "KeloMenuBar/StatusItemController.h"

#include <utility>

namespace kelo {

StatusItemController::StatusItemController(const QString &symbol, const QString &accessibilityDescription,
                                           std::function<void(Menu &)> build, const QString &id,
                                           const QDBusConnection &bus)
    : m_item(id, bus)
{
    m_item.setIcon(symbol, accessibilityDescription);
    m_item.menuNeedsUpdate = std::move(build);
}

} // namespace kelo
