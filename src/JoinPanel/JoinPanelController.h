#pragma once

#include "JoinPanel/JoinNotification.h"
#include "JoinPanel/JoinPanelModel.h"
#include "KeloPanel/FloatingPanelController.h"

#include <QObject>
#include <functional>

class QKeyEvent;

namespace kelo {
class ViewLoader;
}

namespace mivora {

class Preferences;

/// What the panel's buttons and keys do with the meeting on show.
struct JoinPanelActions
{
    std::function<void(const Meeting &)> onJoin;
    std::function<void(const Meeting &)> onSnooze;
    std::function<void(const Meeting &)> onDismiss;
};

/// Shows the Join panel at the corner that the user chose. It decides nothing about timing, and its actions
/// don't hide it: who owns it does, when they have taken effect.
///
/// Where windows can't be placed, or the view can't be loaded, a desktop notification with the same actions
/// takes the panel's place. On a desktop that has no notifications either, the window stands where it is put.
class JoinPanelController final : public QObject
{
    Q_OBJECT

public:
    /// `prefs` and `views` outlive the controller. Nothing is loaded before the first show().
    JoinPanelController(const Preferences &prefs, kelo::ViewLoader &views, const JoinPanelActions &actions,
                        Timestamp now, const QDBusConnection &bus = QDBusConnection::sessionBus());

    const JoinPanelModel &model() const { return m_model; }

    kelo::FloatingPanelController &controller() { return m_controller; }

    /// See `JoinPanelModel`.
    void setDiscreet(bool isDiscreet) { m_model.setDiscreet(isDiscreet); }

    bool isVisible() const { return m_controller.isVisible() || m_notification.isVisible(); }

    /// Shows the meeting. A panel that is already visible changes in place and stays where it is.
    void show(const Meeting &meeting, Timestamp now);

    /// Brings a visible panel up to date; without a `panelRequest` the meeting stays as it is.
    void refresh(const std::optional<Meeting> &panelRequest, Timestamp now);

    void hide();

private:
    void connectActions(const JoinPanelActions &actions);
    bool handleKey(const QKeyEvent &event) const;
    bool showWindow();
    void notificationFailed();

    JoinPanelModel m_model;
    kelo::FloatingPanelController m_controller;
    JoinNotification m_notification;
    const Preferences &m_prefs;
};

} // namespace mivora
