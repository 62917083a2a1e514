#include "Platform/linux/LinuxSystemEvents.h"

#include "Platform/TimeZone.h"

#include <QFileInfo>
#include <ctime>

namespace mivora {

namespace {

/// Tells whether the file is another one than before: its target, for a link, and its content's age.
QString fingerprint(const QString &path)
{
    const QFileInfo file(path);
    return file.canonicalFilePath() % QLatin1Char(' ') %
           QString::number(file.lastModified().toMSecsSinceEpoch()) % QLatin1Char(' ') %
           QString::number(file.size());
}

} // namespace

LinuxSystemEvents::Sources LinuxSystemEvents::Sources::ofTheSystem(const QDBusConnection &systemBus)
{
    return {systemBus, QStringLiteral("/etc/localtime"), [] { return QDateTime::currentDateTime(); },
            [](const QDateTime &time) { return startOfDay(time.date().addDays(1), userTimeZone()); }};
}

LinuxSystemEvents::LinuxSystemEvents(Sources sources, QObject *parent)
    : SystemEvents(parent), m_sources(std::move(sources)), m_zoneWatch(m_sources.zoneFile),
      m_zone(fingerprint(m_sources.zoneFile)), m_day(m_sources.now().date())
{
    connectBus();
    connect(&m_zoneWatch, &FileWatch::changed, this, &LinuxSystemEvents::zoneFileChanged);
    connect(&m_alarm, &RealTimeAlarm::reached, this, &LinuxSystemEvents::checkDay);
    connect(&m_alarm, &RealTimeAlarm::clockWasSet, this, [this] {
        Q_EMIT clockChanged();
        checkDay();
    });
    checkDay();
}

/// QtDBus takes no function pointers here.
void LinuxSystemEvents::connectBus()
{
    m_sources.systemBus.connect(QStringLiteral("org.freedesktop.login1"),
                                QStringLiteral("/org/freedesktop/login1"),
                                QStringLiteral("org.freedesktop.login1.Manager"),
                                QStringLiteral("PrepareForSleep"), this, SLOT(prepareForSleep(bool)));
    m_sources.systemBus.connect(
        QStringLiteral("org.freedesktop.timedate1"), QStringLiteral("/org/freedesktop/timedate1"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"), this,
        SLOT(timedatePropertiesChanged(QString, QVariantMap, QStringList)));
}

void LinuxSystemEvents::prepareForSleep(bool asleep)
{
    if (asleep)
        return;
    Q_EMIT didWake();
    checkDay();
}

void LinuxSystemEvents::timedatePropertiesChanged(const QString &interface, const QVariantMap &changed,
                                                  const QStringList &invalidated)
{
    const QString property = QStringLiteral("Timezone");
    if (interface == QLatin1String("org.freedesktop.timedate1") &&
        (changed.contains(property) || invalidated.contains(property)))
        zoneChanged();
}

void LinuxSystemEvents::zoneFileChanged()
{
    if (fingerprint(m_sources.zoneFile) != m_zone)
        zoneChanged();
}

void LinuxSystemEvents::zoneChanged()
{
    m_zone = fingerprint(m_sources.zoneFile);
    // The C library keeps the zone that it once read until it is told to look again.
    tzset();
    Q_EMIT timeZoneChanged();
    checkDay();
}

void LinuxSystemEvents::checkDay()
{
    const QDateTime now = m_sources.now();
    m_alarm.set(m_sources.nextDay(now));
    if (now.date() == m_day)
        return;
    m_day = now.date();
    Q_EMIT dayChanged();
}

} // namespace mivora
