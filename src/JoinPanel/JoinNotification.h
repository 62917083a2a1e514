#pragma once

#include "KeloPanel/DesktopNotification.h"

#include <QObject>
#include <QTimer>

namespace mivora {

class JoinPanelModel;

/// The Join panel as a desktop notification: the same texts, the same three actions.
class JoinNotification final : public QObject
{
    Q_OBJECT

public:
    /// `model` outlives the notification.
    JoinNotification(const JoinPanelModel &model, const QDBusConnection &bus);
    /// Nothing stays on the screen whose buttons nobody answers.
    ~JoinNotification() override;

    bool isVisible() const { return m_isVisible; }

    void show();
    /// Brings back what the desktop took away by itself.
    void refresh();
    void hide();

Q_SIGNALS:
    /// The desktop shows no notifications; this one is no longer visible.
    void failed();

private:
    void update();
    void act(const QString &action);

    const JoinPanelModel &m_model;
    kelo::DesktopNotification m_notification;
    /// Changes that come together, as at a showing, are presented once.
    QTimer m_update;
    bool m_isVisible = false;
    bool m_hasExpired = false;
};

} // namespace mivora
