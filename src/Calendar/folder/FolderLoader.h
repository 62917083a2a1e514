#pragma once

#include "Calendar/NewsQueue.h"
#include "Calendar/folder/ChangeBatch.h"
#include "Calendar/folder/FileLoading.h"
#include "Calendar/folder/FolderWatch.h"

#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <unordered_map>

namespace mivora {

/// Loads calendar folders on a thread of its own, and then follows their changes. Nothing here blocks the
/// caller, except the destructor, which waits for the file being read.
class FolderLoader
{
public:
    struct Setup
    {
        std::vector<std::string> roots;
        EventWindow window;
        std::vector<std::string> addresses;
    };

    /// \a onNews is called on the loader's thread when takeNews() has something to give.
    FolderLoader(Setup setup, std::function<void()> onNews);
    ~FolderLoader();

    /// Begins to load; to be called once.
    void start();

    /// Loads the occurrences of another window.
    void setWindow(const EventWindow &window);

    /// Compares all folders and files with what is known of them.
    void rescan();

    /// What is new since the last call, oldest first.
    std::vector<LoaderNews> takeNews() { return m_news.take(); }

private:
    void run();
    void wait();
    void wake() const;
    std::chrono::milliseconds waitingTime() const;
    void collectChanges();
    void sortChange(const FolderChange &change);
    void noteFolderChange();
    bool concernsRoot(const std::string &path) const;
    bool concernsOneFile(const FolderChange &change);
    void takeOrders();
    void applyChanges();
    void addChangedFiles(std::vector<FileJob> &jobs);
    void applyWindow(const EventWindow &window);
    void scanAndLoad(Compare compare);
    std::vector<FileJob> scan(Compare compare, EventChanges &changes);
    void watchAboveRoots();
    void load(const std::vector<FileJob> &jobs, EventChanges changes, bool isChange = false);
    void publish(EventChanges changes, bool isChange);
    void checkUnwatched();

    // The loader's thread only.
    FolderTree m_tree;
    FileIndex m_index;
    FolderWatch m_watch;
    ChangeBatch m_batch;
    LoadRequest m_request;
    std::unordered_map<std::string, std::set<std::string>> m_changedFiles;
    std::unordered_map<std::string, std::int64_t> m_folderTimes;
    std::optional<Compare> m_scanNeeded;
    std::vector<StoreCalendar> m_calendars;
    bool m_isReadable = false;
    bool m_calendarsDiffer = true;
    ChangeBatch::Clock::time_point m_nextCheck{};

    // Shared.
    std::atomic<bool> m_isStopping = false;
    std::mutex m_mutex;
    std::optional<EventWindow> m_wantedWindow;
    bool m_rescanWanted = false;
    NewsQueue m_news;
    FileDescriptor m_wakeUp;
    std::thread m_thread;
};

} // namespace mivora
