#include "JoinPanel/JoinPanelController.h"

#include "KeloHotkey/VirtualKeys.h"
#include "Preferences/Preferences.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

namespace mivora {

namespace {

constexpr QSize contentSize(380, 150);
constexpr double cornerMargin = 12;

struct PanelKey
{
    std::uint16_t virtualKey;
    void (JoinPanelModel::*action)() const;
};

// Physical keys, whatever the layout types with them and whatever modifiers are held.
constexpr std::array panelKeys{
    PanelKey{kelo::virtualS, &JoinPanelModel::snooze},
    PanelKey{kelo::virtualReturn, &JoinPanelModel::join},
    PanelKey{kelo::virtualKeypadEnter, &JoinPanelModel::join},
    PanelKey{kelo::virtualEscape, &JoinPanelModel::dismiss},
};

kelo::PanelPlace placeIn(PanelCorner corner)
{
    const bool isLeft = corner == PanelCorner::topLeft || corner == PanelCorner::bottomLeft;
    const bool isTop = corner == PanelCorner::topLeft || corner == PanelCorner::topRight;
    return {(isLeft ? Qt::LeftEdge : Qt::RightEdge) | (isTop ? Qt::TopEdge : Qt::BottomEdge), cornerMargin};
}

} // namespace

JoinPanelController::JoinPanelController(const Preferences &prefs, kelo::ViewLoader &views,
                                         const JoinPanelActions &actions, Timestamp now,
                                         const QDBusConnection &bus)
    : m_model(now),
      m_controller(views,
                   {.module = QStringLiteral("JoinPanelViews"),
                    .component = QStringLiteral("JoinPanelView"),
                    .properties = {{QStringLiteral("model"), QVariant::fromValue<QObject *>(&m_model)}},
                    .size = contentSize,
                    .title = QStringLiteral("Mivora")}),
      m_notification(m_model, bus), m_prefs(prefs)
{
    m_controller.hidesOnResignKey = false;
    connect(&m_notification, &JoinNotification::failed, this, &JoinPanelController::notificationFailed);
    connectActions(actions);
    m_controller.keyHandler = [this](const QKeyEvent &event) { return handleKey(event); };
}

void JoinPanelController::connectActions(const JoinPanelActions &actions)
{
    const auto withMeeting = [this](const std::function<void(const Meeting &)> &action) {
        return [this, action] {
            // A copy: the action may well change the panel's meeting.
            if (const auto meeting = m_model.meeting(); meeting && action)
                action(*meeting);
        };
    };
    m_model.onJoin = withMeeting(actions.onJoin);
    m_model.onSnooze = withMeeting(actions.onSnooze);
    m_model.onDismiss = withMeeting(actions.onDismiss);
}

void JoinPanelController::show(const Meeting &meeting, Timestamp now)
{
    m_model.setMeeting(meeting);
    m_model.setNow(now);
    if (isVisible())
        return;
    const bool usesWindow = kelo::panelPlatform() != kelo::PanelPlatform::notification;
    if (!usesWindow || !showWindow())
        m_notification.show();
}

// A window in the wrong place, and maybe in the way, is better than a missed meeting. Elsewhere than here the
// window has been tried before the notification.
void JoinPanelController::notificationFailed()
{
    if (kelo::panelPlatform() == kelo::PanelPlatform::notification)
        showWindow();
}

void JoinPanelController::refresh(const std::optional<Meeting> &panelRequest, Timestamp now)
{
    if (!isVisible())
        return;
    if (panelRequest)
        m_model.setMeeting(panelRequest);
    m_model.setNow(now);
    m_notification.refresh();
}

void JoinPanelController::hide()
{
    m_controller.hide();
    m_notification.hide();
}

bool JoinPanelController::handleKey(const QKeyEvent &event) const
{
    const auto virtualKey = kelo::virtualKeyForScanCode(event.nativeScanCode());
    const auto *key = std::find_if(panelKeys.begin(), panelKeys.end(), [&](const PanelKey &candidate) {
        return candidate.virtualKey == virtualKey;
    });
    if (key == panelKeys.end())
        return false;
    (m_model.*key->action)();
    return true;
}

bool JoinPanelController::showWindow()
{
    return m_controller.orderFrontRegardless(placeIn(m_prefs.panelCorner()), kelo::mainArea());
}

} // namespace mivora
