#pragma once

#include "KeloMenuBar/StatusItem.h"
#include "KeloMenuBar/backends/NotifierHost.h"

#include <QObject>
#include <QPoint>
#include <functional>

namespace kelo {

class NotifierItem;

/// Shows the item in a StatusNotifier host, with its menu over com.canonical.dbusmenu.
class NotifierBackend final : public QObject
{
    Q_OBJECT

public:
    /// One item per connection. `build` makes the menu anew; `openMenu` shows it in a window of our own.
    NotifierBackend(const QDBusConnection &bus, const QString &id, std::function<Menu()> build,
                    std::function<void(QPoint)> openMenu);
    ~NotifierBackend() override;

    /// Shows this state from now on.
    void show(const StatusItemState &state);

    /// Whether there is a host that draws the item, as far as is known.
    bool hasHost() const { return m_hasHost; }

Q_SIGNALS:
    /// Whether there is a host that shows the item. Said once it is known, and at each change.
    void hostChanged(bool isThere);

private:
    void adopt(const StatusHost &host);
    void setHasHost(bool hasHost);
    bool openMenu(QPoint point);
    void publish();

    QDBusConnection m_bus;
    std::function<void(QPoint)> m_openMenu;
    // What is exported: the interfaces are its adaptors.
    QObject m_itemObject;
    QObject m_menuObject;
    NotifierItem *m_item = nullptr;
    NotifierHost m_host;
    StatusItemState m_state;
    Presentation m_presentation = Presentation::Square;
    // Nothing is drawn or looked up before there is somebody to show it to.
    bool m_hasWatcher = false;
    bool m_hasHost = false;
    bool m_hostOpensMenu = false;
};

} // namespace kelo
