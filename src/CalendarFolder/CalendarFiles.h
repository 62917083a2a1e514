#pragma once

#include "Calendar/CalendarLoader.h"
#include "CalendarFolder/CalendarRoots.h"
#include "CalendarFolder/FolderTree.h"

#include <chrono>
#include <functional>
#include <span>
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
    /// The files whose occurrences may have to be shown, or not to be shown any more; some twice.
    std::vector<File *> touched;
    /// What is shown of events that several files hold: one has an event, another what was changed of it.
    std::unordered_map<std::size_t, Meetings> joined;
    /// Those of them that are to be read again.
    std::unordered_set<std::size_t> touchedEvents;

    /// Takes note that `changed`, in order, hold `now` and nothing else.
    void setHolders(const std::vector<File *> &changed, std::vector<Holder> now);

    /// Forgets the files `gone`, in order; what they showed goes to `changes`.
    void forget(const std::vector<File *> &gone, MeetingChanges &changes);

    /// The part of `holders` that is about an event.
    std::span<const Holder> holdersOf(std::size_t uid) const;
};

/// Reads the named files as one.
using JoinedReader = std::function<std::vector<CalendarFile::Occurrence>(
    const FileCollection &collection, const std::vector<std::string> &names)>;

/// A file that is to be read. The pointers stay valid while no file is taken out.
struct FileJob
{
    FileCollection *collection = nullptr;
    FileCollection::File *file = nullptr;

    const std::string &name() const { return file->first; }

    CalendarFile &entry() const { return file->second; }

    friend auto operator<=>(const FileJob &, const FileJob &) = default;
};

/// An event that a file holds, by `ical::uidHash()`.
struct FileEvent
{
    FileJob job;
    std::size_t uid = 0;

    friend auto operator<=>(const FileEvent &, const FileEvent &) = default;
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

    /// Takes note of the events that the files `read` hold now. Both in any order.
    static void setEvents(std::vector<FileJob> read, std::vector<FileEvent> events);

    /// Forgets files that aren't there any more.
    static void remove(std::vector<FileJob> gone, MeetingChanges &changes);

    /// Brings what is shown in line with what was read; reads events of several files by `readJoined`.
    void show(MeetingChanges &changes, const JoinedReader &readJoined);

    /// The calendars in order of roots and paths.
    std::vector<CalendarInfo> calendars() const;

private:
    std::vector<CalendarRoot> m_roots;
    std::vector<std::unique_ptr<FileCollection>> m_collections;
};

} // namespace mivora
