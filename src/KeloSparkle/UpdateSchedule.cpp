#include "KeloSparkle/UpdateSchedule.h"

#include "KeloSparkle/MeteredConnection.h"

#include <QRandomGenerator>
#include <algorithm>

namespace kelo {

namespace {

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;

qint64 share(double spread, qint64 seconds)
{
    return qint64(spread * double(seconds));
}

} // namespace

QDateTime nextScheduledCheck(const CheckTimes &times)
{
    QDateTime earliest = times.launch.addSecs(10 * minute + share(times.spread, 50 * minute));
    if (!times.lastCheck.isValid() || times.lastCheck > times.now)
        return earliest;
    return std::max(earliest, times.lastCheck.addSecs(day + share(times.spread, 2 * hour)));
}

UpdateSchedule::UpdateSchedule(UpdateMemory &memory, Bus systemBus, Now now, QObject *parent)
    : QObject(parent), m_memory(memory), m_systemBus(std::move(systemBus)), m_now(std::move(now)),
      m_spread(QRandomGenerator::global()->generateDouble())
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &UpdateSchedule::tick);
}

void UpdateSchedule::start()
{
    m_launch = m_now();
    wait();
}

QDateTime UpdateSchedule::next() const
{
    return nextScheduledCheck({m_now(), m_launch, m_memory.lastCheck(), m_spread});
}

void UpdateSchedule::wait()
{
    // An hour at most: timers stand still while the machine sleeps, the clock does not.
    // Nor is there haste when the connection is metered or the user is at an update already.
    const qint64 left = m_now().secsTo(next());
    const qint64 seconds = left > 0 ? std::clamp(left, minute, hour) : hour;
    m_timer.start(std::chrono::seconds(seconds));
}

void UpdateSchedule::tick()
{
    // A launch in the future was seen on a clock that has been set right since.
    m_launch = std::min(m_launch, m_now());
    if (m_now() >= next()) {
        askWhetherMetered(m_systemBus(), this, [this](bool isMetered) {
            if (!isMetered)
                Q_EMIT due();
        });
    }
    wait();
}

} // namespace kelo
