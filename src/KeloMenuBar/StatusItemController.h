#pragma once

#include "KeloMenuBar/StatusItem.h"

#include <utility>

namespace kelo {

/// A status item of an icon and a menu that is rebuilt at every opening.
class StatusItemController final
{
public:
    /// `build` fills the menu, which is empty when it is called. Items are enabled unless it says otherwise.
    /// For the rest see StatusItem.
    StatusItemController(const QString &symbol, const QString &accessibilityDescription,
                         std::function<void(Menu &)> build, const QString &id, ViewLoader &views,
                         const QDBusConnection &bus = QDBusConnection::sessionBus())
        : m_item(id, views, bus)
    {
        m_item.setState({.icon = symbol, .accessibilityDescription = accessibilityDescription});
        m_item.menuNeedsUpdate = std::move(build);
    }

    StatusItem &item() { return m_item; }

    bool isVisible() const { return m_item.state().isVisible; }

    void setVisible(bool isVisible)
    {
        StatusItemState state = m_item.state();
        state.isVisible = isVisible;
        m_item.setState(state);
    }

private:
    StatusItem m_item;
};

} // namespace kelo
