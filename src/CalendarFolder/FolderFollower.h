#pragma once

#include "CalendarFolder/FileLoading.h"
#include "CalendarFolder/FolderLoader.h"
#include "CalendarFolder/FolderWatch.h"

#include <mutex>
#include <sys/eventfd.h>

namespace mivora {

/// What a FolderLoader has done on another thread: reads all folders, and then follows their changes.
class FolderFollower
{
public:
    FolderFollower(FolderLoader::Setup setup, EventWindow window, CalendarLoader::Deliver deliver);

    /// Reads and follows until stop() is called.
    void run();

    /// Has run() return as soon as the file being read is done. Can be called on any thread.
    void stop();

    /// Loads other days. Can be called on any thread.
    void setWindow(const EventWindow &window);

private:
    using Clock = std::chrono::steady_clock;

    /// What ends wait(), for whoever has something to say.
    struct WakeUp
    {
        FileDescriptor descriptor{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
        std::atomic<bool> isScanWanted = false;

        void wake() const;
    };

    void wait() const;
    void collectChanges();
    void sortChange(const FolderChange &change);
    bool concernsFolders(const std::string &path) const;
    void noteChange();
    void takeRequests();
    void apply();
    std::vector<FileJob> scan();
    void watchAbove(const std::string &path, FolderWatch::Interest interest);
    std::vector<FileJob> changedFiles(bool isJustScanned);
    void load(const std::vector<FileJob> &jobs);

    std::shared_ptr<WakeUp> m_wakeUp = std::make_shared<WakeUp>();

    // The thread of run() only.
    std::vector<CalendarRoot> m_roots;
    CalendarLoader::Deliver m_deliver;
    LoadRequest m_request;
    CalendarFiles m_files;
    FolderWatch m_watch;
    FolderTree m_tree;
    /// The folders that were listed.
    std::set<std::string> m_folders;
    /// What is to be done when m_due has come: list the folders, or read some files again, by folder.
    bool m_isScanNeeded = true;
    std::map<std::string, std::set<std::string>> m_changed;
    std::optional<Clock::time_point> m_due;
    std::optional<Clock::time_point> m_latestDue;
    bool m_isReadable = false;

    // Shared.
    std::atomic<bool> m_isStopping = false;
    std::mutex m_mutex;
    std::optional<EventWindow> m_wantedWindow;
};

} // namespace mivora
