#include "Onboarding/FirstMeetingModel.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"
#include "Scheduling/Scheduler.h"

namespace mivora {

FirstMeetingModel::FirstMeetingModel(const Scheduler &scheduler, TimeFormat formatTime)
    : m_scheduler(scheduler), m_formatTime(std::move(formatTime))
{
    connect(&scheduler, &Scheduler::changed, this, &FirstMeetingModel::changed);
}

bool FirstMeetingModel::hasMeeting() const
{
    return m_scheduler.next().has_value();
}

QString FirstMeetingModel::title() const
{
    return hasMeeting() ? titleText(m_scheduler.next()->title) : QString();
}

QString FirstMeetingModel::detail() const
{
    if (!hasMeeting())
        return {};
    const Meeting &next = *m_scheduler.next();
    const QString time = m_formatTime(next.start);
    if (!next.joinLink)
        return tr("%1 · no link").arg(time);
    return time + QStringLiteral(" · ") + serviceName(next.joinLink->service);
}

QString FirstMeetingModel::color() const
{
    const auto &next = m_scheduler.next();
    return next && next->calendarColor ? QString::fromStdString(next->calendarColor->hex()) : QString();
}

} // namespace mivora
