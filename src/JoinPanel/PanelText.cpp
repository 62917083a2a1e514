#include "JoinPanel/PanelText.h"

#include "Calendar/TitleText.h"
#include "Meetings/Countdown.h"

#include <QCoreApplication>
#include <cmath>

namespace mivora {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("JoinPanel", text);
}

QString serviceName(const JoinLink &link)
{
    const std::string_view name = displayName(link.service);
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

} // namespace

QString panelTimeText(Timestamp start, Timestamp now)
{
    const Seconds left = start - now;
    if (left >= Seconds(60))
        return tr("Starts in %1").arg(QString::fromStdString(countdownText(left)));
    if (left <= Seconds(-60))
        return tr("Started %1m ago").arg(QString::number(std::floor(-left.count() / 60), 'f', 0));
    return tr("Starting now");
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
        text.serviceName = serviceName(*meeting->joinLink);
    text.accentColor = meeting->calendarColor;
    return text;
}

} // namespace mivora
