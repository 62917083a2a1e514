#include "JoinPanel/JoinPanelModel.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"

#include <QCoreApplication>
#include <cmath>
#include <utility>

namespace mivora {

namespace {

/// The context of the texts for translators.
struct JoinPanel
{
    Q_DECLARE_TR_FUNCTIONS(JoinPanel)
};

} // namespace

QString panelTimeText(Timestamp start, Timestamp now)
{
    const Seconds left = start - now;
    if (left >= Seconds(60))
        return JoinPanel::tr("Starts in %1").arg(countdownText(left));
    if (left <= Seconds(-60))
        return JoinPanel::tr("Started %1m ago").arg(QString::number(std::floor(-left.count() / 60), 'f', 0));
    return JoinPanel::tr("Starting now");
}

PanelText panelText(const std::optional<Meeting> &meeting, Timestamp now, bool isDiscreet)
{
    PanelText text;
    if (!meeting)
        return text;
    text.title = isDiscreet ? discreetTitle() : titleText(meeting->title);
    text.timeText = panelTimeText(meeting->start, now);
    text.hasStarted = meeting->start <= now;
    if (meeting->joinLink)
        text.serviceName = serviceName(meeting->joinLink->service);
    text.accentColor = meeting->calendarColor;
    return text;
}

JoinPanelModel::JoinPanelModel(Timestamp now) : m_now(now) {}

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

void JoinPanelModel::setDiscreet(bool isDiscreet)
{
    m_isDiscreet = isDiscreet;
    updateText();
}

QString JoinPanelModel::accentColor() const
{
    return m_text.accentColor ? QString::fromStdString(m_text.accentColor->hex()) : QString();
}

void JoinPanelModel::updateText()
{
    PanelText text = panelText(m_meeting, m_now, m_isDiscreet);
    if (text == m_text)
        return;
    m_text = std::move(text);
    Q_EMIT changed();
}

} // namespace mivora
