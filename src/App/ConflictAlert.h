#pragma once

#include "KeloPanel/DesktopNotification.h"

#include <QObject>
#include <QWindow>
#include <memory>

namespace kelo {
class ViewLoader;
}

namespace mivora {

/// Tells the user that the shortcut belongs to another program: a small window, or a desktop notification
/// where no window can be made. Main thread only.
class ConflictAlert final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(QString informativeText READ informativeText CONSTANT)

public:
    /// \a views must outlive the alert; nothing is loaded before it is shown.
    ConflictAlert(kelo::ViewLoader &views, const QDBusConnection &bus, QObject *parent = nullptr);
    ~ConflictAlert() override;

    /// \a shortcut as it is displayed. An alert that is on screen changes in place.
    void show(const QString &shortcut);

    QString message() const { return m_message; }

    QString informativeText() const;

    /// The user has read it.
    Q_INVOKABLE void close();

Q_SIGNALS:
    void messageChanged();

private:
    kelo::ViewLoader &m_views;
    kelo::DesktopNotification m_notification;
    QString m_message;
    std::unique_ptr<QWindow> m_window;
};

} // namespace mivora
