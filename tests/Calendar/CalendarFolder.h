#pragma once

#include "Meetings/Timestamp.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>
#include <string>

namespace mivora {

inline QTimeZone zoneNamed(const char *name)
{
    return QTimeZone(QByteArray(name));
}

/// "2026-03-10T09:00:00Z" and the like.
inline Timestamp at(const char *text)
{
    return timestampFromSeconds(
        double(QDateTime::fromString(QLatin1String(text), Qt::ISODate).toSecsSinceEpoch()));
}

/// A calendar with one event of an hour; start as in "20260310T090000Z".
inline std::string eventText(const std::string &title, const std::string &start = "20260310T090000Z",
                             const std::string &more = {})
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//EN\r\nBEGIN:VEVENT\r\nUID:" + title +
           "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + start + "\r\nDURATION:PT1H\r\nSUMMARY:" + title +
           "\r\n" + more + "END:VEVENT\r\nEND:VCALENDAR\r\n";
}

/// Runs the event loop until condition holds; false when it doesn't within limit.
template<typename Condition>
bool waitFor(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(10))
{
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
    }
    return true;
}

/// A folder that is gone with the test.
class CalendarFolder
{
public:
    std::string path(const std::string &relative = {}) const
    {
        const std::string root = m_dir.path().toStdString();
        return relative.empty() ? root : root + '/' + relative;
    }

    void makeFolder(const std::string &relative) const
    {
        QDir().mkpath(QString::fromStdString(path(relative)));
    }

    /// Writes a file, and the folders to it.
    void write(const std::string &relative, const std::string &text) const
    {
        const std::size_t slash = relative.rfind('/');
        if (slash != std::string::npos)
            makeFolder(relative.substr(0, slash));
        QFile file(QString::fromStdString(path(relative)));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), qint64(text.size())) < 0)
            qFatal("can't write %s", qPrintable(file.fileName()));
    }

    void rename(const std::string &from, const std::string &to) const
    {
        if (std::rename(path(from).c_str(), path(to).c_str()) != 0)
            qFatal("can't rename %s", from.c_str());
    }

    void remove(const std::string &relative) const
    {
        const QString target = QString::fromStdString(path(relative));
        if (!QFile::remove(target))
            QDir(target).removeRecursively();
    }

    void link(const std::string &target, const std::string &relative) const
    {
        QFile::link(QString::fromStdString(target), QString::fromStdString(path(relative)));
    }

private:
    QTemporaryDir m_dir;
};

} // namespace mivora
