#pragma once

#include "KeloPanel/DesktopNotification.h"
#include "KeloPanel/FloatingPanelController.h"

#include <QObject>
#include <QTimer>

namespace kelo {

/// Shows a short message on the screen with the mouse pointer for a few seconds. It never takes the keyboard
/// and lets clicks through; the next message replaces it. Where windows can't be placed it is a notification.
class ToastController final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY textChanged)

public:
    /// `views` outlives the controller; nothing is loaded before the first message.
    explicit ToastController(ViewLoader &views, const QDBusConnection &bus = QDBusConnection::sessionBus());

    /// Plain text, one sentence or two.
    void show(const QString &text);

    const QString &text() const { return m_text; }

    bool isVisible() const { return m_controller.isVisible(); }

Q_SIGNALS:
    void textChanged();

private:
    bool showPanel();

    QString m_text;
    FloatingPanelController m_controller;
    DesktopNotification m_notification;
    QTimer m_hideTimer;
};

} // namespace kelo
