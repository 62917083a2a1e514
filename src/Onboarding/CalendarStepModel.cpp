#include "Onboarding/CalendarStepModel.h"

#include "Calendar/EventSource.h"
#include "Platform/Workspace.h"

#include <QPointer>
#include <utility>

namespace mivora {

CalendarStepModel::CalendarStepModel(EventSource &source, std::function<void()> refresh,
                                     LinkOpener openSystemSettings, std::chrono::milliseconds pollInterval)
    : m_source(source), m_refresh(std::move(refresh)), m_openSystemSettings(std::move(openSystemSettings))
{
    m_timer.setInterval(pollInterval);
    connect(&m_timer, &QTimer::timeout, this, &CalendarStepModel::poll);
}

void CalendarStepModel::appear()
{
    setStatus(m_source.authorization());
    m_timer.start();
}

void CalendarStepModel::disappear()
{
    m_timer.stop();
}

QString CalendarStepModel::symbol() const
{
    return isGranted() ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("calendar");
}

void CalendarStepModel::requestAccess()
{
    if (std::exchange(m_isAsking, true))
        return;
    m_source.requestAccess([model = QPointer(this), before = m_changes](bool) {
        if (model)
            model->finishRequest(before);
    });
}

// The poll may have seen the new permission before the answer came, and refreshed then.
void CalendarStepModel::finishRequest(int changesBefore)
{
    m_isAsking = false;
    setStatus(m_source.authorization());
    if (m_changes == changesBefore)
        m_refresh();
}

void CalendarStepModel::openCalendarPrivacy() const
{
    m_openSystemSettings(QLatin1String(calendarPrivacyLink));
}

void CalendarStepModel::openInternetAccounts() const
{
    m_openSystemSettings(QLatin1String(internetAccountsLink));
}

void CalendarStepModel::setStatus(CalendarAuthorization status)
{
    if (std::exchange(m_status, status) != status)
        Q_EMIT statusChanged();
}

void CalendarStepModel::poll()
{
    const CalendarAuthorization status = m_source.authorization();
    if (status == m_status)
        return;
    ++m_changes;
    setStatus(status);
    m_refresh();
}

} // namespace mivora
