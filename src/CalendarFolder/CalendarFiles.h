#pragma once

#include "Calendar/CalendarLoader.h"
#include "CalendarFolder/CalendarRoots.h"
#include "CalendarFolder/FolderTree.h"

#include <chrono>
#include <functional>
#include <unordered_map>
#include <unordered_set>

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
    /// Every occurrence lies between these, for any window. earliest > latest when there are none.
    double earliest = 0;
    double latest = -1;
    std::vector<Occurrence> occurrences;
    /// Those that the store shows: all, but for events that another file of the folder holds too.
    Meetings shown;
    /// The events that it holds, whatever their days, each once. Of a file that is a calendar: none.
    std::vector<std::size_t> uids;
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

/// A folder with calendar files.
struct FileCollection
{
    using File = std::pair<const std::string, CalendarFile>;

    FolderCalendar calendar;
    std::unordered_map<std::string, CalendarFile> files;
    /// The files that have an event, by its identifier.
    std::unordered_multimap<std::size_t, File *> holders;
    /// The files whose occurrences may have to be shown, or not to be shown any more.
    std::unordered_set<File *> touched;
    /// What is shown of events that several files hold: one has an event, another what was changed of it.
    std::unordered_map<std::size_t, Meetings> joined;
    /// Those of them that are to be read again.
    std::unordered_set<std::size_t> touchedEvents;

    /// Takes note of what `file` holds now, as far as other files of the folder can hold it too.
    void setEvents(File &file, std::vector<std::size_t> uids);

    /// Forgets a file; what it showed goes to `changes`. Returns the one after it.
    decltype(files)::iterator forget(decltype(files)::iterator file, MeetingChanges &changes);

    /// Forgets all files.
    void clear(MeetingChanges &changes);

    /// The names of the files that hold an event, in the order in which they are read as one.
    std::vector<std::string> namesOfHolders(std::size_t uid) const;
};

/// Reads the event `uid` of the named files as one, into meetings.
using JoinedReader = std::function<Meetings(const FileCollection &collection, std::size_t uid,
                                            const std::vector<std::string> &names)>;

/// A file that is to be read. The pointers stay valid while no file is taken out.
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
    /// not what they were; what disappeared goes to `changes`.
    std::vector<FileJob> update(const std::vector<FolderListing> &folders, MeetingChanges &changes);

    /// The file `name` of `folder`, where something happened; nothing when the folder has to be listed for
    /// it.
    std::optional<FileJob> jobFor(const std::string &folder, const std::string &name);

    /// The jobs for another window: files that have nothing in it, or whose occurrences are all known, need
    /// no reading.
    std::vector<FileJob> changeWindow(const EventWindow &from, const EventWindow &to);

    /// Forgets a file that isn't there any more.
    static void remove(const FileJob &job, MeetingChanges &changes);

    /// Brings what is shown in line with what was read; reads events of several files by `readJoined`.
    void show(MeetingChanges &changes, const JoinedReader &readJoined);

    /// The calendars in order of roots and paths.
    std::vector<CalendarInfo> calendars() const;

private:
    std::vector<CalendarRoot> m_roots;
    std::vector<std::unique_ptr<FileCollection>> m_collections;
};

} // namespace mivora
