#pragma once

#include <QDateTime>
#include <QObject>
#include <QSocketNotifier>

namespace mivora {

/// An alarm on the system's real-time clock: it also goes off in time after the machine slept or the clock
/// was set. See timerfd_create(2), TFD_TIMER_CANCEL_ON_SET.
class RealTimeAlarm final : public QObject
{
    Q_OBJECT

public:
    explicit RealTimeAlarm(QObject *parent = nullptr);
    ~RealTimeAlarm() override;

    /// Replaces the time at which the alarm goes off.
    void set(const QDateTime &time);

Q_SIGNALS:
    /// The time has come. There is no further alarm until one is set.
    void reached();
    /// The clock was set, and the alarm with it is off until it is set again.
    void clockWasSet();

private:
    void read();

    int m_timer = -1;
    QSocketNotifier m_notifier;
};

} // namespace mivora
