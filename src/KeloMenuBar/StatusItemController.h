#pragma once

#include "KeloMenuBar/Menu.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

class QPoint;

namespace kelo {

class NotifierBackend;
class PopupMenu;
class TrayBackend;
class ViewLoader;

/// Everything that a status item shows, whatever shows it.
struct StatusItemState
{
    /// The text beside the icon; empty for the icon alone. Blanks around it don't matter.
    QString title{};
    /// A few characters that stand for the title where there is room for a square only ("2m").
    QString countdown{};
    /// Icon and texts are drawn in orange.
    bool isUrgent = false;
    /// The name of the icon's symbol: "calendar.badge.clock" or "calendar.badge.exclamationmark".
    QString icon{};
    /// What a screen reader says for the icon.
    QString accessibilityDescription{};
    /// Empty for none.
    QString toolTip{};
    bool isVisible = true;

    friend bool operator==(const StatusItemState &, const StatusItemState &) = default;
};

/// An icon with a title and a menu in the status area of whatever desktop this is.
///
/// It is shown by a StatusNotifier host where there is one, else by an XEmbed tray on X11; hosts may come and
/// go at any time. Changes are brought to the host together, when control is back in the event loop.
class StatusItemController final : public QObject
{
    Q_OBJECT

public:
    /// `build` fills the menu, which is empty, each time that it is about to open. Items are enabled unless
    /// it says otherwise. `id` names the program to hosts. `views` shows the menu where the host can't, and
    /// outlives the item. One item per connection to the bus, which need not be connected.
    StatusItemController(const QString &symbol, const QString &accessibilityDescription,
                         std::function<void(Menu &)> build, const QString &id, ViewLoader &views,
                         const QDBusConnection &bus = QDBusConnection::sessionBus());
    ~StatusItemController() override;

    const StatusItemState &state() const { return m_state; }

    void setState(const StatusItemState &state);

    bool isVisible() const { return m_state.isVisible; }

    void setVisible(bool isVisible);

    /// Whether anything shows the item, as far as is known by now.
    bool isShown() const { return m_isShown; }

Q_SIGNALS:
    void isShownChanged();

private:
    void flush();
    Menu buildMenu() const;
    void openMenu(QPoint position);
    void setNotifierHost(bool isThere);
    void updateShown();
    void sayIfNothingShowsIt();

    std::function<void(Menu &)> m_build;
    ViewLoader &m_views;
    StatusItemState m_state;
    std::unique_ptr<NotifierBackend> m_notifier;
    std::unique_ptr<TrayBackend> m_tray;
    std::unique_ptr<PopupMenu> m_popup;
    QTimer m_flush;
    bool m_isShown = true;
};

} // namespace kelo
