#include "Platform/TimeZone.h"

#include <QDir>
#include <ctime>

namespace mivora {

namespace {

/// The zone of a POSIX rule such as "CET-1CEST,M3.5.0,M10.5.0/3". Qt takes those without daylight saving time
/// for other things than the C library does.
QTimeZone zoneOfRule(QByteArray rule)
{
    tzset();
    if (!daylight)
        return QTimeZone(int(-timezone));
    // What the C library assumes where a rule doesn't say when the clocks change.
    if (!rule.contains(','))
        rule += ",M3.2.0,M11.1.0";
    return QTimeZone(rule);
}

/// The zone that a file of the zone database, or a copy of one, holds.
QTimeZone zoneOfFile(const QDir &zones, const QString &path)
{
    QTimeZone zone(zones.relativeFilePath(QFileInfo(path).canonicalFilePath()).toLocal8Bit());
    QFile file(path);
    if (zone.isValid() || !file.open(QFile::ReadOnly))
        return zone;
    // Qt may refuse names that lead out of its folder. The file's last line is the rule of today (RFC
    // 8536, 3.3).
    const QByteArray content = file.readAll().trimmed();
    return QTimeZone(content.mid(content.lastIndexOf('\n') + 1));
}

QTimeZone zoneOfEnvironment()
{
    if (!qEnvironmentVariableIsSet("TZ"))
        return QTimeZone::systemTimeZone();
    QByteArray name = qgetenv("TZ");
    if (name.startsWith(':'))
        name.remove(0, 1);
    const QDir zones(QStringLiteral("/usr/share/zoneinfo"));
    const QString path = zones.filePath(QString::fromLocal8Bit(name));
    if (!QFileInfo(path).isFile())
        return name.isEmpty() ? QTimeZone::utc() : zoneOfRule(name);
    return name.startsWith('/') ? zoneOfFile(zones, path) : QTimeZone(name);
}

} // namespace

QTimeZone userTimeZone()
{
    const QTimeZone zone = zoneOfEnvironment();
    return zone.isValid() ? zone : QTimeZone::utc();
}

QDateTime startOfDay(QDate day, const QTimeZone &zone)
{
    QDateTime start = day.startOfDay(zone);
    if (!start.isValid())
        start = day.addDays(1).startOfDay(zone);
    // Clocks put back to midnight show it a second time, and only that one is known to Qt.
    const int offsetBefore = zone.offsetFromUtc(start.addSecs(-1));
    const QDateTime earlier = start.addSecs(start.offsetFromUtc() - offsetBefore);
    return earlier < start && earlier.date() == start.date() ? earlier : start;
}

} // namespace mivora
