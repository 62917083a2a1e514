#pragma once

#include "KeloPanel/DesktopNotification.h"

#include <QObject>

namespace mivora {

class JoinPanelModel;

/// The Join panel as a desktop notification: the same texts, the same three actions.
class JoinNotification final : public QObject
{
    Q_OBJECT

public:
    /// \a model outlives the notification.
    JoinNotification(const JoinPanelModel &model, const QDBusConnection &bus);

    bool isVisible() const { return m_isVisible; }

    void show();
    void hide();

private:
    void update();
    void act(const QString &action);

    const JoinPanelModel &m_model;
    kelo::DesktopNotification m_notification;
    bool m_isVisible = false;
};

} // namespace mivora
