#pragma once

#include "KeloMenuBar/Menu.h"
#include "KeloMenuBar/StatusItemState.h"

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

/// An icon with a title and a menu in the status area of whatever desktop this is.
///
/// It is shown by a StatusNotifier host where there is one, else by an XEmbed tray on X11; hosts may come and
/// go at any time. Changes are brought to the host together, when control is back in the event loop.
class StatusItem : public QObject
{
    Q_OBJECT

public:
    /// @p id names the program to hosts. One item per connection to the bus, which need not be connected.
    explicit StatusItem(const QString &id, const QDBusConnection &bus = QDBusConnection::sessionBus(),
                        QObject *parent = nullptr);
    ~StatusItem() override;

    /// Fills the menu, which is empty, each time that it is about to open.
    std::function<void(Menu &)> menuNeedsUpdate;

    const StatusItemState &state() const { return m_state; }

    /// The text beside the icon; empty for none.
    void setTitle(const QString &title);
    /// What is shown of the title where there is room for a few characters only.
    void setCountdown(const QString &countdown);
    void setUrgent(bool isUrgent);
    /// The name of the symbol: "calendar.badge.clock" or "calendar.badge.exclamationmark".
    void setIcon(const QString &symbol, const QString &accessibilityDescription);
    void setToolTip(const QString &toolTip);
    void setVisible(bool isVisible);

Q_SIGNALS:
    /// Some part of the state has really changed.
    void stateChanged();

private:
    template<typename Value> void change(Value StatusItemState::*member, const Value &value);
    void flush();
    Menu buildMenu() const;
    void openMenu(QPoint position);
    void setNotifierHost(bool isThere);
    void sayIfNothingShowsIt();

    StatusItemState m_state;
    std::unique_ptr<NotifierBackend> m_notifier;
    std::unique_ptr<TrayBackend> m_tray;
    std::unique_ptr<PopupMenu> m_popup;
    QTimer m_noHost;
    bool m_isFlushDue = false;
};

} // namespace kelo
