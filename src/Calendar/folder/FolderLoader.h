#pragma once

#include "Calendar/NewsQueue.h"
#include "Calendar/folder/ChangeBatch.h"
#include "Calendar/folder/FileLoading.h"
#include "Calendar/folder/FolderWatch.h"

#include <array>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <unordered_map>

namespace mivora {

/// Loads calendar folders on a thread of its own, and then follows their changes. Nothing here blocks the
/// caller, except stop(). The thread owns the loader as well: one that hangs in a folder outlives its user.
class FolderLoader : public std::enable_shared_from_this<FolderLoader>
{
public:
    struct Setup
    {
        std::vector<CalendarRoot> roots;
        EventWindow window;
        std::vector<std::string> addresses;
        /// Folders that are not touched.
        std::set<std::string> leftOut;
    };

    /// \a onNews is called on the loader's thread when takeNews() has something to give.
    FolderLoader(Setup setup, std::function<void()> onNews);

    /// Begins to load; to be called once, and stop() after it.
    void start();

    /// Ends the loading; onNews is not called any more. Waits for the file being read, but only shortly for
    /// one that doesn't come.
    void stop();

    /// Whether the thread has ended.
    bool hasEnded() const;

    /// The folder that a read hangs in for longer than \a limit; nothing when all goes on.
    std::optional<std::string> stuckIn(std::chrono::milliseconds limit) const;

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
    void noteHalfWritten(const std::vector<FileJob> &jobs);
    void readHalfWrittenAgain();
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
    using FileNames = std::unordered_map<std::string, std::set<std::string>>;
    FileNames m_changedFiles;
    FileNames m_halfWritten;
    std::optional<ChangeBatch::Clock::time_point> m_readAgain;
    std::unordered_map<std::string, std::int64_t> m_folderTimes;
    std::optional<Compare> m_scanNeeded;
    std::vector<StoreCalendar> m_calendars;
    bool m_isReadable = false;
    bool m_calendarsDiffer = true;
    ChangeBatch::Clock::time_point m_nextCheck{};

    // Shared.
    std::atomic<bool> m_isStopping = false;
    mutable std::mutex m_mutex;
    std::optional<EventWindow> m_wantedWindow;
    bool m_rescanWanted = false;
    bool m_hasEnded = false;
    mutable std::condition_variable m_end;
    std::array<ReadingMark, 2> m_marks;
    NewsQueue m_news;
    FileDescriptor m_wakeUp;
    std::thread m_thread;
};

} // namespace mivora
