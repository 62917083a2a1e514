#include "Platform/linux/RealTimeAlarm.h"

#include <cerrno>
#include <sys/timerfd.h>
#include <unistd.h>

namespace mivora {

RealTimeAlarm::RealTimeAlarm(QObject *parent)
    : QObject(parent), m_timer(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)),
      m_notifier(m_timer, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &RealTimeAlarm::read);
}

RealTimeAlarm::~RealTimeAlarm()
{
    m_notifier.setEnabled(false);
    ::close(m_timer);
}

void RealTimeAlarm::set(const QDateTime &time)
{
    const qint64 milliseconds = time.toMSecsSinceEpoch();
    itimerspec spec{};
    spec.it_value.tv_sec = milliseconds / 1000;
    spec.it_value.tv_nsec = (milliseconds % 1000) * 1'000'000;
    const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    // The alarm is set in this case too, but a cancellation that nobody has read yet is told only here.
    if (timerfd_settime(m_timer, flags, &spec, nullptr) != 0 && errno == ECANCELED)
        QMetaObject::invokeMethod(this, &RealTimeAlarm::clockWasSet, Qt::QueuedConnection);
}

void RealTimeAlarm::read()
{
    quint64 expirations = 0;
    const ssize_t length = ::read(m_timer, &expirations, sizeof expirations);
    if (length == sizeof expirations)
        Q_EMIT reached();
    else if (errno == ECANCELED)
        Q_EMIT clockWasSet();
}

} // namespace mivora
