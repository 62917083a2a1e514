#include "JoinPanel/JoinPanelModel.h"

#include <utility>

namespace mivora {

JoinPanelModel::JoinPanelModel(Timestamp now, QObject *parent) : QObject(parent), m_now(now) {}

void JoinPanelModel::join() const
{
    if (onJoin)
        onJoin();
}

void JoinPanelModel::snooze() const
{
    if (onSnooze)
        onSnooze();
}

void JoinPanelModel::dismiss() const
{
    if (onDismiss)
        onDismiss();
}

void JoinPanelModel::setMeeting(const std::optional<Meeting> &meeting)
{
    if (m_meeting == meeting)
        return;
    m_meeting = meeting;
    Q_EMIT meetingChanged();
    updateText();
}

void JoinPanelModel::setNow(Timestamp now)
{
    if (m_now == now)
        return;
    m_now = now;
    Q_EMIT nowChanged();
    updateText();
}

QString JoinPanelModel::accentColor() const
{
    return m_text.accentColor ? QString::fromStdString(m_text.accentColor->hex()) : QString();
}

void JoinPanelModel::updateText()
{
    // All is new before anything is announced: a slot that reads two properties sees them fit together.
    const PanelText old = std::exchange(m_text, panelText(m_meeting, m_now));
    const auto announce = [&](auto PanelText::*field, void (JoinPanelModel::*changed)()) {
        if (old.*field != m_text.*field)
            Q_EMIT(this->*changed)();
    };
    announce(&PanelText::title, &JoinPanelModel::titleChanged);
    announce(&PanelText::timeText, &JoinPanelModel::timeTextChanged);
    announce(&PanelText::hasStarted, &JoinPanelModel::hasStartedChanged);
    announce(&PanelText::serviceName, &JoinPanelModel::serviceNameChanged);
    announce(&PanelText::accentColor, &JoinPanelModel::accentColorChanged);
}

} // namespace mivora
