#pragma once

#include "Calendar/StoreMemory.h"
#include "Calendar/folder/CollectionLayout.h"

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// What is remembered of the files of calendars: their state, when they matter, and their occurrences in the
/// loaded days. Text is not kept, so that a hundred thousand files stay small.
namespace mivora {

struct FileEntry
{
    FileStamp stamp;
    /// Every occurrence lies between these, for any window. earliest > latest when there are none.
    double earliest = 0;
    double latest = -1;
    StoreEvents occurrences;
    /// A state in which it looked half written, and how long that isn't believed.
    FileStamp halfWritten;
    std::chrono::steady_clock::time_point halfWrittenUntil{};
    /// What it says about its calendar; matters in a root, where a file is a calendar.
    std::optional<std::string> name;
    std::optional<Color> color;
};

/// A folder with calendar files.
struct FileCollection
{
    std::string path;
    FolderIdentity identity;
    /// Of the calendar that the folder is. For a root, whose files are calendars, what their own begin with.
    std::string calendarID;
    std::string title;
    std::optional<std::string> accountTitle;
    FolderProperties properties;
    bool filesAreCalendars = false;
    std::unordered_map<std::string, FileEntry> files;

    /// The calendar that the events of a file belong to.
    std::string calendarOf(const std::string &fileName) const;
};

/// A file that is to be read. The pointers stay valid while no file is taken out of the index.
struct FileJob
{
    FileCollection *collection = nullptr;
    const std::string *name = nullptr;
    FileEntry *entry = nullptr;
};

/// The name of a calendar file without its ".ics".
std::string withoutSuffix(const std::string &name);

/// Which files an update compares with what lies in their folders now.
enum class Compare { newFiles, allFiles };

/// The files of all calendars.
class FileIndex
{
public:
    explicit FileIndex(std::vector<CalendarRoot> roots) : m_roots(std::move(roots)) {}

    /// Follows the folders as listed: takes in and drops calendars and files. Gives the files to be read;
    /// what disappeared goes to \a changes.
    std::vector<FileJob> update(std::vector<FolderListing> folders, Compare compare, EventChanges &changes);

    /// The jobs for another window: files that have nothing in it, or whose occurrences are all known, need
    /// no reading; their occurrences are brought in line at once.
    std::vector<FileJob> changeWindow(const EventWindow &from, const EventWindow &to, EventChanges &changes);

    /// The file \a name of \a folder, which was written; nothing when the folder's listing has to tell of it.
    std::optional<FileJob> jobFor(const std::string &folder, const std::string &name);

    /// The collection in \a folder; null when that holds no calendar.
    FileCollection *find(const std::string &folder);

    /// Forgets a file; its occurrences go to \a changes.
    static void remove(FileCollection &collection, const std::string &name, EventChanges &changes);

    /// The calendars in order of roots and paths.
    std::vector<StoreCalendar> calendars() const;

private:
    std::vector<CalendarRoot> m_roots;
    std::vector<std::unique_ptr<FileCollection>> m_collections;
};

} // namespace mivora
