#pragma once

#include "KeloMenuBar/StatusItem.h"
#include "KeloMenuBar/backends/TrayManager.h"
#include "KeloMenuBar/backends/TrayWindow.h"

#include <QObject>
#include <functional>
#include <memory>

namespace kelo {

/// Shows the item in an XEmbed tray, as long as there is one.
class TrayBackend final : public QObject
{
    Q_OBJECT

public:
    /// Whether windows of this program can be docked at all: it runs on X11.
    static bool applies();

    /// `openMenu` shows the menu beside a point of the screen.
    explicit TrayBackend(std::function<void(QPoint)> openMenu);

    /// Shows this state from now on.
    void show(const StatusItemState &state);

    /// Whether a tray shows the item, or has been asked to.
    bool hasTray() const { return m_hasTray; }

private:
    void dock();
    void undock();

    std::function<void(QPoint)> m_openMenu;
    StatusItemState m_state;
    TrayManager m_manager;
    std::unique_ptr<TrayWindow> m_window;
    bool m_hasTray = false;
};

} // namespace kelo
