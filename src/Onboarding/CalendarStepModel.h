#pragma once

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

public:
    using LinkOpener = std::function<void(const QString &link)>;

    /// `refresh` is called after every change of the permission that the step sees, and after every answer.
    /// `openSystemSettings` is given links into the system settings. `source` must outlive the model.
    CalendarStepModel(EventSource &source, std::function<void()> refresh, LinkOpener openSystemSettings);

    /// Reads the permission anew. To be called again and again while the step is on show.
    void update();

    bool canAsk() const { return m_status == CalendarAuthorization::notDetermined; }

    bool isGranted() const { return m_status == CalendarAuthorization::granted; }

    bool isDenied() const { return m_status == CalendarAuthorization::denied; }

    /// Asks for access. Does nothing while an answer is awaited.
    Q_INVOKABLE void requestAccess();

    /// Shows where the permission is given, and where accounts with calendars are added.
    Q_INVOKABLE void openCalendarPrivacy() const;
    Q_INVOKABLE void openInternetAccounts() const;

Q_SIGNALS:
    void statusChanged();

private:
    bool readStatus();
    void finishRequest();

    EventSource &m_source;
    std::function<void()> m_refresh;
    LinkOpener m_openSystemSettings;
    CalendarAuthorization m_status;
    bool m_isAsking = false;
};

} // namespace mivora
