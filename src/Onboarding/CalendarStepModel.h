#pragma once

#include "Meetings/CalendarInfo.h"

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace mivora {

class EventSource;

/// The step that asks for access to the calendars and then watches the permission, which may also be given or
/// taken away elsewhere.
class CalendarStepModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString symbol READ symbol NOTIFY statusChanged)
    Q_PROPERTY(bool canAsk READ canAsk NOTIFY statusChanged)
    Q_PROPERTY(bool isGranted READ isGranted NOTIFY statusChanged)
    Q_PROPERTY(bool isDenied READ isDenied NOTIFY statusChanged)

public:
    using LinkOpener = std::function<void(const QString &link)>;

    /// `refresh` is called after every change of the permission that the step sees. `openSystemSettings` is
    /// given links into the system settings. `source` must outlive the model.
    CalendarStepModel(EventSource &source, std::function<void()> refresh, LinkOpener openSystemSettings,
                      std::chrono::milliseconds pollInterval = std::chrono::seconds(1));

    /// The step comes on show: from now on the permission is read once in a poll interval.
    void appear();
    void disappear();

    /// The permission as the step last saw it.
    CalendarAuthorization status() const { return m_status; }

    /// The name of the icon's symbol.
    QString symbol() const;

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
    void setStatus(CalendarAuthorization status);
    void poll();
    void finishRequest(int changesBefore);

    EventSource &m_source;
    std::function<void()> m_refresh;
    LinkOpener m_openSystemSettings;
    CalendarAuthorization m_status = CalendarAuthorization::notDetermined;
    bool m_isAsking = false;
    /// How many changes poll() has seen.
    int m_changes = 0;
    QTimer m_timer;
};

} // namespace mivora
