#pragma once

#include "Calendar/CalendarWays.h"
#include "Meetings/CalendarInfo.h"

#include <QObject>
#include <functional>

namespace mivora {

class EventSource;

/// The step that asks for access to the calendars and then watches the permission, which may also be given or
/// taken away elsewhere.
class CalendarStepModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canAsk READ canAsk NOTIFY statusChanged)
    Q_PROPERTY(bool isGranted READ isGranted NOTIFY statusChanged)
    Q_PROPERTY(bool isDenied READ isDenied NOTIFY statusChanged)
    /// Access is no matter, for there is no calendar.
    Q_PROPERTY(bool isNothing READ isNothing NOTIFY statusChanged)
    Q_PROPERTY(QObject *ways READ ways CONSTANT)

public:
    /// `refresh` is called after every change of the permission that the step sees, and after every answer.
    /// `source` and `ways` must outlive the model.
    CalendarStepModel(EventSource &source, std::function<void()> refresh, CalendarWays &ways);

    /// Reads the permission anew. To be called again and again while the step is on show.
    void update();

    bool canAsk() const { return m_status == CalendarAuthorization::notDetermined; }

    bool isGranted() const { return m_status == CalendarAuthorization::granted; }

    bool isDenied() const { return m_status == CalendarAuthorization::denied && !m_isNothing; }

    bool isNothing() const { return m_isNothing; }

    QObject *ways() { return &m_ways; }

    /// Asks for access. Does nothing while an answer is awaited.
    Q_INVOKABLE void requestAccess();

Q_SIGNALS:
    void statusChanged();

private:
    bool readStatus();
    void finishRequest();

    EventSource &m_source;
    std::function<void()> m_refresh;
    CalendarWays &m_ways;
    CalendarAuthorization m_status;
    bool m_isNothing;
    bool m_isAsking = false;
};

} // namespace mivora
