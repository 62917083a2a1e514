#pragma once

#include "support/MeetingFactory.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTimeZone>
#include <filesystem>
#include <fstream>
#include <string>

namespace mivora {

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
        std::filesystem::create_directories(path(relative));
    }

    /// Writes a file, and the folders to it.
    void write(const std::string &relative, const std::string &text) const
    {
        std::filesystem::create_directories(std::filesystem::path(path(relative)).parent_path());
        std::ofstream file(path(relative));
        if (!(file << text).flush())
            throw std::runtime_error("can't write " + relative);
    }

    void rename(const std::string &from, const std::string &to) const
    {
        std::filesystem::rename(path(from), path(to));
    }

    void remove(const std::string &relative) const { std::filesystem::remove_all(path(relative)); }

    void link(const std::string &target, const std::string &relative) const
    {
        std::filesystem::create_symlink(target, path(relative));
    }

private:
    QTemporaryDir m_dir;
};

} // namespace mivora
