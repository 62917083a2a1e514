#pragma once

#include "KeloMenuBar/Menu.h"
#include "KeloMenuBar/StatusItem.h"

#include <functional>

namespace kelo {

/// A status item of an icon and a menu that is rebuilt at every opening.
class StatusItemController final
{
public:
    /// @p build fills the menu, which is empty when it is called. Items are enabled unless it says otherwise.
    StatusItemController(const QString &symbol, const QString &accessibilityDescription,
                         std::function<void(Menu &)> build, const QString &id,
                         const QDBusConnection &bus = QDBusConnection::sessionBus());

    StatusItem &item() { return m_item; }

    bool isVisible() const { return m_item.state().isVisible; }

    void setVisible(bool isVisible) { m_item.setVisible(isVisible); }

private:
    StatusItem m_item;
};

} // namespace kelo
