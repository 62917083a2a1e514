#pragma once

#include "KeloPanel/DesktopNotification.h"
#include "KeloTheme/ViewWindow.h"

namespace mivora {

/// Tells the user that the shortcut belongs to another program: a small window, or a desktop notification
/// where no window can be made. Main thread only.
class ConflictAlert final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(QString informativeText READ informativeText CONSTANT)

public:
    /// `views` must outlive the alert; nothing is loaded before it is shown.
    ConflictAlert(kelo::ViewLoader &views, const QDBusConnection &bus, QObject *parent = nullptr);

    /// `shortcut` as it is displayed. An alert that is on screen changes in place.
    void show(const QString &shortcut);

    QString message() const { return m_message; }

    QString informativeText() const;

    bool isVisible() const { return m_window.isVisible(); }

    /// The user has read it.
    Q_INVOKABLE void close() { m_window.close(); }

Q_SIGNALS:
    void messageChanged();

private:
    kelo::DesktopNotification m_notification;
    QString m_message;
    kelo::ViewWindow m_window;
};

} // namespace mivora
