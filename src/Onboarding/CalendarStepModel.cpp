#include "Onboarding/CalendarStepModel.h"

#include "Calendar/EventSource.h"

#include <QPointer>
#include <utility>

namespace mivora {

CalendarStepModel::CalendarStepModel(EventSource &source, std::function<void()> refresh, CalendarWays &ways)
    : m_source(source), m_refresh(std::move(refresh)), m_ways(ways), m_status(source.authorization()),
      m_isNothing(source.isNothingToRead())
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

// Whether it is another one.
bool CalendarStepModel::readStatus()
{
    const CalendarAuthorization before = std::exchange(m_status, m_source.authorization());
    const bool wasNothing = std::exchange(m_isNothing, m_source.isNothingToRead());
    if (m_status == before && m_isNothing == wasNothing)
        return false;
    Q_EMIT statusChanged();
    return true;
}

} // namespace mivora
