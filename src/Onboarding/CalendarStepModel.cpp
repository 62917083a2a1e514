#include "Onboarding/CalendarStepModel.h"

#include "Calendar/EventSource.h"
#include "Platform/Workspace.h"

#include <QPointer>
#include <utility>

namespace mivora {

CalendarStepModel::CalendarStepModel(EventSource &source, std::function<void()> refresh,
                                     LinkOpener openSystemSettings)
    : m_source(source), m_refresh(std::move(refresh)), m_openSystemSettings(std::move(openSystemSettings)),
      m_status(source.authorization())
{
}

void CalendarStepModel::update()
{
    if (readStatus())
        m_refresh();
}

void CalendarStepModel::requestAccess()
{
    if (std::exchange(m_isAsking, true))
        return;
    m_source.requestAccess([model = QPointer(this)](bool) {
        if (model)
            model->finishRequest();
    });
}

void CalendarStepModel::finishRequest()
{
    m_isAsking = false;
    readStatus();
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

// Whether it is another one.
bool CalendarStepModel::readStatus()
{
    const CalendarAuthorization before = std::exchange(m_status, m_source.authorization());
    if (m_status == before)
        return false;
    Q_EMIT statusChanged();
    return true;
}

} // namespace mivora
