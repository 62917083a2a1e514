#include "JoinPanel/PanelText.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"

#include <QCoreApplication>
#include <cmath>

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

PanelText panelText(const std::optional<Meeting> &meeting, Timestamp now)
{
    PanelText text;
    if (!meeting)
        return text;
    text.title = titleText(meeting->title);
    text.timeText = panelTimeText(meeting->start, now);
    text.hasStarted = meeting->start <= now;
    if (meeting->joinLink)
        text.serviceName = serviceName(meeting->joinLink->service);
    text.accentColor = meeting->calendarColor;
    return text;
}

} // namespace mivora
