#pragma once

#include "KeloSparkle/UpdateMemory.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <functional>

namespace kelo {

struct CheckTimes
{
    QDateTime now;
    QDateTime launch;
    /// Invalid when there never was a check.
    QDateTime lastCheck;
    /// From 0 to 1, by chance: so that not everybody asks at the same time.
    double spread = 0;
};

/// When to look for updates by itself: a day after the last check and up to two hours later, but never
/// within ten minutes to an hour after the launch. A last check in the future was made by a wrong clock.
QDateTime nextScheduledCheck(const CheckTimes &times);

/// Tells once a day that it is time to look for updates, except while the connection is metered.
class UpdateSchedule final : public QObject
{
    Q_OBJECT

public:
    using Now = std::function<QDateTime()>;
    using Bus = std::function<QDBusConnection()>;

    /// \a memory must outlive the schedule.
    UpdateSchedule(UpdateMemory &memory, Bus systemBus, Now now, QObject *parent = nullptr);

    /// The moment of the call counts as the launch.
    void start();

    /// Looks at the clock; called by the timer.
    void tick();

Q_SIGNALS:
    void due();

private:
    QDateTime next() const;
    void wait();

    UpdateMemory &m_memory;
    Bus m_systemBus;
    Now m_now;
    QDateTime m_launch;
    double m_spread = 0;
    QTimer m_timer;
};

} // namespace kelo
