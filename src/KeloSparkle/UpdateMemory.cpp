#include "KeloSparkle/UpdateMemory.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

namespace kelo {

namespace {

const QString lastCheckKey = QStringLiteral("lastCheck");
const QString announcedKey = QStringLiteral("announcedVersion");

} // namespace

QString UpdateMemory::defaultPath()
{
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    // A relative path is to be ignored (XDG base directories).
    if (!QDir::isAbsolutePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QLatin1Char('/') + QCoreApplication::applicationName() + QStringLiteral("/updates.ini");
}

QDateTime UpdateMemory::lastCheck() const
{
    if (m_lastCheck)
        return *m_lastCheck;
    const QSettings file(m_path, QSettings::IniFormat);
    return QDateTime::fromString(file.value(lastCheckKey).toString(), Qt::ISODate);
}

void UpdateMemory::setLastCheck(const QDateTime &time)
{
    m_lastCheck = time;
    QSettings(m_path, QSettings::IniFormat).setValue(lastCheckKey, time.toUTC().toString(Qt::ISODate));
}

QString UpdateMemory::announcedVersion() const
{
    if (m_announced)
        return *m_announced;
    return QSettings(m_path, QSettings::IniFormat).value(announcedKey).toString();
}

void UpdateMemory::setAnnouncedVersion(const QString &version)
{
    m_announced = version;
    QSettings(m_path, QSettings::IniFormat).setValue(announcedKey, version);
}

} // namespace kelo
