#pragma once

#include "Platform/SystemEvents.h"
#include "Platform/linux/FileWatch.h"
#include "Platform/linux/RealTimeAlarm.h"

#include <QDBusConnection>
#include <QDate>
#include <QVariantMap>
#include <functional>

namespace mivora {

/// The system's events from systemd's services on the system bus (org.freedesktop.login1 and timedate1) and,
/// for systems without these, from the zone's file and the kernel's clock.
class LinuxSystemEvents final : public SystemEvents
{
    Q_OBJECT

public:
    /// What is watched.
    struct Sources
    {
        QDBusConnection systemBus;
        /// A link to, or a copy of, the data of the local time zone.
        QString zoneFile;
        std::function<QDateTime()> now;
        /// When the day after that of a time begins.
        std::function<QDateTime(const QDateTime &)> nextDay;

        /// Those of the real system, with `systemBus`.
        static Sources ofTheSystem(const QDBusConnection &systemBus);
    };

    explicit LinuxSystemEvents(Sources sources, QObject *parent = nullptr);

private Q_SLOTS:
    void prepareForSleep(bool asleep);
    void timedatePropertiesChanged(const QString &interface, const QVariantMap &changed,
                                   const QStringList &invalidated);

private:
    void connectBus();
    void zoneFileChanged();
    void zoneChanged();
    /// Announces a new day, and sets the alarm for the next.
    void checkDay();

    Sources m_sources;
    FileWatch m_zoneWatch;
    RealTimeAlarm m_alarm;
    QString m_zone;
    QDate m_day;
};

} // namespace mivora
