#include "CalendarFolder/FolderWatch.h"

#include "Calendar/CalendarLoader.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mivora {

namespace {

constexpr std::uint32_t nameEvents = IN_MOVED_FROM | IN_MOVED_TO | IN_CREATE | IN_DELETE | IN_DELETE_SELF |
                                     IN_MOVE_SELF | IN_ATTRIB | IN_ONLYDIR | IN_EXCL_UNLINK;

/// Whether there may be other names for what stands at `path`, or other things behind it.
bool isLinked(const std::string &path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && (S_ISLNK(status.st_mode) || status.st_nlink > 1);
}

/// Whether a new file came with what is in it: one that was linked, and whose other name is gone already.
bool hasContent(const std::string &path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && status.st_size > 0;
}

} // namespace

FolderWatch::FolderWatch() : m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (!m_inotify.isOpen())
        reportMissing();
}

void FolderWatch::beginRound()
{
    m_round.clear();
    m_isComplete = m_inotify.isOpen();
}

void FolderWatch::add(const std::string &path, Interest interest)
{
    if (!m_inotify.isOpen())
        return;
    // A folder that is watched for two reasons has only one watch, for all that either wants to know.
    const std::uint32_t events =
        interest == Interest::content ? nameEvents | IN_CLOSE_WRITE : nameEvents | IN_MASK_ADD;
    const int watch = ::inotify_add_watch(m_inotify.number(), path.c_str(), events);
    if (watch >= 0) {
        // A folder reached a second time, by a link, keeps its first name.
        if (m_round.insert(watch).second)
            m_paths[watch] = path;
    } else if (errno == ENOSPC || errno == ENOMEM) {
        reportMissing();
    }
}

void FolderWatch::endRound()
{
    std::erase_if(m_paths, [this](const auto &entry) {
        if (m_round.contains(entry.first))
            return false;
        ::inotify_rm_watch(m_inotify.number(), entry.first);
        return true;
    });
}

FolderWatch::Changes FolderWatch::read()
{
    Changes changes;
    alignas(inotify_event) char buffer[64 << 10];
    for (;;) {
        const ssize_t length = ::read(m_inotify.number(), buffer, sizeof buffer);
        if (length <= 0)
            return changes;
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
            collect(*event, changes);
            at += ssize_t(sizeof(inotify_event) + event->len);
        }
    }
}

void FolderWatch::collect(const inotify_event &event, Changes &changes)
{
    if (event.mask & IN_Q_OVERFLOW) {
        changes.isIncomplete = true;
        return;
    }
    const auto found = m_paths.find(event.wd);
    if (found == m_paths.end())
        return;
    FolderChange change;
    change.folder = found->second;
    if (event.len > 0)
        change.name = event.name;
    if (event.mask & IN_IGNORED)
        m_paths.erase(found);
    change.isLinked = change.name.empty() || (event.mask & IN_ISDIR) || isLinked(change.path());
    // A new file is empty until it is written, and its writing is told separately; a link is complete at
    // once.
    if (change.isLinked || !(event.mask & IN_CREATE) || hasContent(change.path()))
        changes.changes.push_back(std::move(change));
}

void FolderWatch::reportMissing()
{
    m_isComplete = false;
    if (std::exchange(m_isReported, true))
        return;
    qCWarning(calendarLog,
              "Too few inotify watches (%s): changes of calendars are noticed late. Raise "
              "fs.inotify.max_user_watches.",
              std::strerror(errno));
}

} // namespace mivora
