#pragma once

#include "KeloMenuBar/backends/StatusIcon.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QPoint>

namespace kelo {

class NotifierItem;

/// Shows the item in a StatusNotifier host, with its menu over com.canonical.dbusmenu: that of the owner of
/// org.kde.StatusNotifierWatcher, whenever it comes, goes or is replaced. Nobody is waited for: a watcher
/// that does not answer is taken at its best. While there is a panel that wants it as org.x.StatusIcon, it is
/// that one's instead.
class NotifierBackend final : public QObject
{
    Q_OBJECT

public:
    /// One item per connection. `build` makes the menu anew; `openMenu` shows it in a window of our own.
    /// `state` outlives the backend.
    NotifierBackend(const QDBusConnection &bus, const QString &id, const StatusItemState &state,
                    std::function<Menu()> build, std::function<void(QPoint)> openMenu);
    ~NotifierBackend() override;

    /// Shows the state as it is now.
    void update();

    /// Whether there is a host that draws the item, as far as is known.
    bool hasHost() const { return m_hasHost; }

Q_SIGNALS:
    /// Whether there is a host that shows the item. Said once it is known, and at each change.
    void hostChanged(bool isThere);

private Q_SLOTS:
    void followHosts();
    void setOwner(const QString &owner = {});

private:
    void askProcess();
    void askHosts();
    void takeHosts(const QStringList &names);
    static bool wantsIcon(const QStringList &names);
    void askDrawn();
    void registerItem();
    void setHasHost(bool hasHost);
    bool openMenu(QPoint point);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    const StatusItemState &m_state;
    std::function<void(QPoint)> m_openMenu;
    // What is exported: the interfaces are its adaptors.
    StatusIcon m_icon;
    QObject m_itemObject;
    QObject m_menuObject;
    NotifierItem *m_item = nullptr;
    // The watcher's unique name; empty if there is none.
    QString m_owner;
    StatusHost m_host;
    // Nothing is drawn or looked up before there is somebody to show it to.
    std::optional<Presentation> m_presentation;
    bool m_isIcon = false;
    bool m_isRegistered = false;
    bool m_hasHost = false;
};

} // namespace kelo
