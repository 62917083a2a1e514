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
    m_meeting = meeting;
    updateText();
}

void JoinPanelModel::setNow(Timestamp now)
{
    m_now = now;
    updateText();
}

QString JoinPanelModel::accentColor() const
{
    return m_text.accentColor ? QString::fromStdString(m_text.accentColor->hex()) : QString();
}

void JoinPanelModel::updateText()
{
    PanelText text = panelText(m_meeting, m_now);
    if (text == m_text)
        return;
    m_text = std::move(text);
    Q_EMIT changed();
}

} // namespace mivora
