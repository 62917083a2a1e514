#pragma once

#include "Calendar/StoreMemory.h"
#include "Calendar/folder/CollectionLayout.h"

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
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
    /// Those that the store shows: all, but for events that another file of the folder has a later version
    /// of.
    StoreEvents shown;
    /// The events that it holds, whatever their days, by identifier. Of a file that is a calendar: none.
    std::vector<ical::EventVersion> versions;
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
    using File = std::pair<const std::string, FileEntry>;
    std::unordered_map<std::string, FileEntry> files;
    /// The files that have an event, by its identifier (`ical::uidHash()`).
    std::unordered_multimap<std::size_t, File *> holders;
    /// The files whose occurrences may have to be shown, or not to be shown any more.
    std::unordered_set<File *> touched;

    /// Takes note of what \a file holds now, as far as other files of the folder can hold it too.
    void setVersions(File &file, std::vector<ical::EventVersion> versions);

    /// Whether no other file has a later version of an event of \a file.
    bool isLatest(const File &file, std::size_t uid) const;

    /// The calendar that the events of a file belong to.
    std::string calendarOf(const std::string &fileName) const;
};

/// A file that is to be read. The pointers stay valid while no file is taken out of the index.
struct FileJob
{
    FileCollection *collection = nullptr;
    FileCollection::File *file = nullptr;

    const std::string &name() const { return file->first; }

    FileEntry &entry() const { return file->second; }
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

    /// Brings what is shown in line with what was read.
    void show(EventChanges &changes);

    /// The jobs for another window: files that have nothing in it, or whose occurrences are all known, need
    /// no reading; their occurrences are brought in line at once.
    std::vector<FileJob> changeWindow(const EventWindow &from, const EventWindow &to);

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
