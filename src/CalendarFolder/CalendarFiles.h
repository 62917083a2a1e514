#pragma once

#include "Calendar/CalendarLoader.h"
#include "CalendarFolder/CalendarRoots.h"
#include "CalendarFolder/FolderTree.h"

#include <chrono>
#include <functional>
#include <map>
#include <unordered_map>

/// What is remembered of the files of calendars: their state, when they matter, and their meetings in the
/// loaded days. Text is not kept, so that a hundred thousand files stay small.
namespace mivora {

struct CalendarFile
{
    /// An occurrence with `ical::uidHash()` of its event; 0 when that has no identifier.
    struct Occurrence
    {
        std::size_t uid = 0;
        std::shared_ptr<const Meeting> meeting;
    };

    /// As it was when it was read. It may have changed in that same instant: then it counts as changed.
    FileStamp stamp;
    bool isStampSure = false;
    /// It isn't there any more, or is no file.
    bool isGone = false;
    /// Every occurrence lies between these, for any window. earliest > latest when there are none.
    double earliest = 0;
    double latest = -1;
    std::vector<Occurrence> occurrences;
    /// What reading it found for `FileCollection::holders`, which take it from here.
    std::vector<std::size_t> events;
    /// How long it may be half written before that is believed; nothing while it isn't.
    std::optional<std::chrono::steady_clock::time_point> halfWrittenUntil;
    /// What it says about its calendar; matters in a root, where a file is a calendar.
    std::optional<std::string> name;
    std::optional<Color> color;
};

/// What a folder says about the calendar that it is, or the calendars that its files are.
struct FolderCalendar
{
    std::string path;
    /// For a root, whose files are calendars, what their identifiers begin with.
    std::string id;
    std::string title;
    std::string accountTitle;
    FolderProperties properties;
    bool filesAreCalendars = false;

    /// The identifier of the calendar that the events of a file belong to.
    std::string idFor(const std::string &fileName) const;

    friend bool operator==(const FolderCalendar &, const FolderCalendar &) = default;
};

struct FileCollection;

using FileNames = std::vector<std::string>;

/// Reads the named files of a folder as one.
using JoinedReader = std::function<std::vector<CalendarFile::Occurrence>(const FileCollection &collection,
                                                                         const FileNames &names)>;

/// A folder with calendar files.
struct FileCollection
{
    using File = std::pair<const std::string, CalendarFile>;

    /// A file has an event, whatever its days.
    struct Holder
    {
        std::size_t uid = 0;
        File *file = nullptr;

        friend auto operator<=>(const Holder &, const Holder &) = default;
    };

    FolderCalendar calendar;
    std::unordered_map<std::string, CalendarFile> files;
    /// In order, each once. Of a root, whose files are calendars: none.
    std::vector<Holder> holders;
    /// The files that were read or went since the last show(); some twice.
    std::vector<File *> touched;
    /// The files that have occurrences, at the most.
    std::vector<File *> filled;
    /// By the names of files that hold the same events: one has an event, another what was changed of it.
    std::map<FileNames, std::vector<CalendarFile::Occurrence>> joined;
    /// What is to be seen of all that.
    Meetings shown;
    bool isShownAsItIs = true;

    /// Takes note of what happened to `file`.
    void touch(File *file);

    /// Brings what is shown in line with what was read, and forgets the files that are gone.
    void show(const JoinedReader &readJoined);

private:
    /// By the event, the names of the files that hold it, in `joined`.
    using SharedEvents = std::unordered_map<std::size_t, const FileNames *>;

    void forgetTouched();
    SharedEvents findShared(const JoinedReader &readJoined);
};

/// A file that is to be read. The pointers stay valid until the next show().
struct FileJob
{
    FileCollection *collection = nullptr;
    FileCollection::File *file = nullptr;

    const std::string &name() const { return file->first; }

    CalendarFile &entry() const { return file->second; }

    friend auto operator<=>(const FileJob &, const FileJob &) = default;
};

/// The files of all calendars.
class CalendarFiles
{
public:
    explicit CalendarFiles(std::vector<CalendarRoot> roots) : m_roots(std::move(roots)) {}

    /// Follows the folders as listed: takes in and drops calendars and files. Gives the files that are new or
    /// not what they were.
    std::vector<FileJob> update(const std::vector<FolderListing> &folders);

    /// The file `name` of `folder`, where something happened; nothing when the folder has to be listed for
    /// it.
    std::optional<FileJob> jobFor(const std::string &folder, const std::string &name);

    /// The jobs for another window: files that have nothing in it need no reading.
    std::vector<FileJob> changeWindow(const EventWindow &from, const EventWindow &to);

    /// The meetings of all files; reads events of several files by `readJoined`.
    Meetings meetings(const JoinedReader &readJoined);

    /// The calendars in order of roots and paths.
    std::vector<CalendarInfo> calendars() const;

private:
    std::vector<CalendarRoot> m_roots;
    std::vector<std::unique_ptr<FileCollection>> m_collections;
};

} // namespace mivora
