#include "CalendarFolder/CalendarFiles.h"

#include <QString>
#include <algorithm>
#include <map>
#include <sys/stat.h>

namespace mivora {

namespace {

/// Text for settings and JSON, whatever bytes the file system holds.
std::string validUtf8(const std::string &bytes)
{
    return QString::fromStdString(bytes).toStdString();
}

std::string titleOf(const FolderListing &folder)
{
    return folder.properties.displayName.value_or(folder.path.substr(folder.path.rfind('/') + 1));
}

bool isCalendar(const FolderListing &folder, bool hasCalendarsBelow)
{
    if (!folder.files.empty())
        return true;
    const FolderProperties &properties = folder.properties;
    return folder.depth > 0 && !hasCalendarsBelow && (properties.displayName || properties.color);
}

/// Whether a calendar lies in the folder at `index`. Parents stand right before what they hold.
bool hasCalendarsBelow(const std::vector<FolderListing> &folders, std::size_t index)
{
    for (std::size_t i = index + 1; i < folders.size() && folders[i].depth > folders[index].depth; ++i) {
        if (isCalendar(folders[i], false))
            return true;
    }
    return false;
}

FolderCalendar calendarOf(const FolderListing &folder, const std::string &accountTitle,
                          const std::string &prefix)
{
    return {.path = folder.path,
            .id = validUtf8(prefix + folder.relativePath),
            .title = validUtf8(titleOf(folder)),
            .accountTitle = validUtf8(folder.depth == 2 ? accountTitle : std::string()),
            .properties = folder.properties,
            .filesAreCalendars = folder.depth == 0};
}

/// Drops the files that are no longer listed, and gives those that are new or not what they were.
void updateFiles(FileCollection &collection, const std::vector<std::string> &names, bool meetingsDiffer,
                 std::vector<FileJob> &jobs, MeetingChanges &changes)
{
    const std::unordered_set<std::string_view> listed(names.begin(), names.end());
    std::vector<FileCollection::File *> gone;
    for (FileCollection::File &file : collection.files) {
        if (!listed.contains(file.first))
            gone.push_back(&file);
    }
    std::sort(gone.begin(), gone.end());
    collection.forget(gone, changes);
    const FileDescriptor folder =
        collection.files.empty() ? FileDescriptor() : openFolder(collection.calendar.path);
    for (const std::string &name : names) {
        const auto [file, isNew] = collection.files.try_emplace(name);
        struct stat status = {};
        if (isNew || (meetingsDiffer && !file->second.occurrences.empty()) || !file->second.isStampSure ||
            ::fstatat(folder.number(), name.c_str(), &status, 0) != 0 ||
            FileStamp::of(status) != file->second.stamp)
            jobs.push_back({&collection, &*file});
    }
}

void append(Meetings &meetings, const Meetings &more)
{
    meetings.insert(meetings.end(), more.begin(), more.end());
}

/// Touches the events that the holders named by `isOne` share with other files, and those files.
template<typename Predicate> void touchShared(FileCollection &collection, const Predicate &isOne)
{
    const auto end = collection.holders.end();
    for (auto first = collection.holders.begin(); first != end;) {
        const auto last =
            std::find_if(first, end, [&](const auto &other) { return other.uid != first->uid; });
        if (last - first > 1 && std::any_of(first, last, isOne)) {
            collection.touchedEvents.insert(first->uid);
            for (auto holder = first; holder != last; ++holder)
                collection.touched.push_back(holder->file);
        }
        first = last;
    }
}

/// Calls `act` with each collection in `jobs` and its files, in order.
template<typename Action> void forEachCollection(std::vector<FileJob> jobs, const Action &act)
{
    std::sort(jobs.begin(), jobs.end());
    for (auto job = jobs.begin(); job != jobs.end();) {
        FileCollection &collection = *job->collection;
        std::vector<FileCollection::File *> files;
        for (; job != jobs.end() && job->collection == &collection; ++job)
            files.push_back(job->file);
        act(collection, files);
    }
}

bool overlapsWindow(const CalendarFile &file, const EventWindow &window, double slack)
{
    return file.earliest - slack <= secondsSinceEpoch(window.to) &&
           file.latest + slack >= secondsSinceEpoch(window.from);
}

bool liesInside(const CalendarFile &file, const EventWindow &window)
{
    return file.earliest >= secondsSinceEpoch(window.from) && file.latest <= secondsSinceEpoch(window.to);
}

void keepOverlapping(CalendarFile &file, const EventWindow &window)
{
    std::erase_if(file.occurrences, [&](const CalendarFile::Occurrence &occurrence) {
        return !overlaps(occurrence.meeting->start, occurrence.meeting->end, window.from, window.to);
    });
}

void showOwn(const FileCollection &collection, FileCollection::File &file, MeetingChanges &changes)
{
    std::vector<std::shared_ptr<const Meeting> *> places;
    Meetings own;
    for (auto &[uid, meeting] : file.second.occurrences) {
        if (uid == 0 || collection.holdersOf(uid).size() <= 1) {
            places.push_back(&meeting);
            own.push_back(meeting);
        }
    }
    keepUnchanged(std::move(file.second.shown), own, changes);
    // So that each meeting is in memory once.
    for (std::size_t i = 0; i < own.size(); ++i)
        *places[i] = own[i];
    file.second.shown = std::move(own);
}

/// Shows the touched events that several files hold. Files that share many events are read once for all of
/// them.
void showJoined(FileCollection &collection, MeetingChanges &changes, const JoinedReader &readJoined)
{
    std::map<std::vector<std::string>, std::vector<std::size_t>> together;
    for (const std::size_t uid : std::exchange(collection.touchedEvents, {})) {
        std::vector<std::string> names;
        for (const FileCollection::Holder &holder : collection.holdersOf(uid))
            names.push_back(holder.file->first);
        // In the order in which they are read as one.
        std::sort(names.begin(), names.end());
        together[std::move(names)].push_back(uid);
    }
    for (const auto &[names, uids] : together) {
        std::unordered_map<std::size_t, Meetings> read;
        if (names.size() > 1)
            for (CalendarFile::Occurrence &occurrence : readJoined(collection, names))
                read[occurrence.uid].push_back(std::move(occurrence.meeting));
        for (const std::size_t uid : uids) {
            Meetings &shown = collection.joined[uid];
            keepUnchanged(std::move(shown), read[uid], changes);
            shown = std::move(read[uid]);
            if (names.size() <= 1)
                collection.joined.erase(uid);
        }
    }
}

void appendFileCalendars(const FileCollection &root, std::vector<CalendarInfo> &calendars)
{
    const std::size_t first = calendars.size();
    for (const auto &[name, file] : root.files)
        calendars.push_back({.id = root.calendar.idFor(name),
                             .title = validUtf8(file.name.value_or(name.substr(0, name.size() - 4))),
                             .accountTitle = {},
                             .color = file.color ? file.color : root.calendar.properties.color});
    std::sort(calendars.begin() + std::ptrdiff_t(first), calendars.end(),
              [](const CalendarInfo &left, const CalendarInfo &right) { return left.id < right.id; });
}

} // namespace

std::string FolderCalendar::idFor(const std::string &fileName) const
{
    return filesAreCalendars ? id + validUtf8(fileName) : id;
}

void FileCollection::setHolders(const std::vector<File *> &changed, std::vector<Holder> now)
{
    const auto isOfChanged = [&](const Holder &holder) {
        return std::binary_search(changed.begin(), changed.end(), holder.file);
    };
    touchShared(*this, isOfChanged);
    std::erase_if(holders, isOfChanged);
    std::sort(now.begin(), now.end());
    now.erase(std::unique(now.begin(), now.end()), now.end());
    const auto others = std::ptrdiff_t(holders.size());
    holders.insert(holders.end(), now.begin(), now.end());
    std::inplace_merge(holders.begin(), holders.begin() + others, holders.end());
    touchShared(*this, isOfChanged);
    touched.insert(touched.end(), changed.begin(), changed.end());
}

void FileCollection::forget(const std::vector<File *> &gone, MeetingChanges &changes)
{
    if (gone.empty())
        return;
    setHolders(gone, {});
    std::erase_if(touched, [&](File *file) { return std::binary_search(gone.begin(), gone.end(), file); });
    for (const File *file : gone) {
        append(changes.removed, file->second.shown);
        files.erase(files.find(file->first));
    }
}

std::span<const FileCollection::Holder> FileCollection::holdersOf(std::size_t uid) const
{
    const auto isBefore = [](const Holder &left, const Holder &right) { return left.uid < right.uid; };
    const auto [first, last] = std::equal_range(holders.begin(), holders.end(), Holder{uid}, isBefore);
    return {first, last};
}

std::vector<FileJob> CalendarFiles::update(const std::vector<FolderListing> &folders, MeetingChanges &changes)
{
    std::unordered_map<std::string, std::unique_ptr<FileCollection>> previous;
    for (std::unique_ptr<FileCollection> &collection : std::exchange(m_collections, {})) {
        const std::string path = collection->calendar.path;
        previous.emplace(path, std::move(collection));
    }
    std::vector<FileJob> jobs;
    std::string accountTitle;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const FolderListing &folder = folders[i];
        if (folder.depth == 1)
            accountTitle = titleOf(folder);
        if (!isCalendar(folder, hasCalendarsBelow(folders, i)))
            continue;
        std::unique_ptr<FileCollection> &collection = previous[folder.path];
        if (!collection)
            collection = std::make_unique<FileCollection>();
        FolderCalendar calendar = calendarOf(folder, accountTitle, m_roots[folder.rootIndex].prefix);
        // Titles and owners tell who the user is.
        const bool isAnother = calendar != collection->calendar;
        collection->calendar = std::move(calendar);
        updateFiles(*collection, folder.files, isAnother, jobs, changes);
        m_collections.push_back(std::move(collection));
    }
    for (const auto &[path, gone] : previous) {
        if (!gone)
            continue;
        for (const auto &[name, file] : gone->files)
            append(changes.removed, file.shown);
        for (const auto &[uid, shown] : gone->joined)
            append(changes.removed, shown);
    }
    return jobs;
}

std::optional<FileJob> CalendarFiles::jobFor(const std::string &folder, const std::string &name)
{
    const auto found = std::find_if(m_collections.begin(), m_collections.end(), [&](const auto &collection) {
        return collection->calendar.path == folder;
    });
    if (found == m_collections.end() || !isCalendarFileName(name))
        return std::nullopt;
    FileCollection &collection = **found;
    // A new file in a root is a new calendar, which comes with the listing of its folder.
    const auto file = collection.calendar.filesAreCalendars ? collection.files.find(name)
                                                            : collection.files.try_emplace(name).first;
    if (file == collection.files.end())
        return std::nullopt;
    return FileJob{&collection, &*file};
}

std::vector<FileJob> CalendarFiles::changeWindow(const EventWindow &from, const EventWindow &to)
{
    // Floating times and whole days move with the zone, by a day at most.
    const bool zoneDiffers = from.zone != to.zone;
    const double slack = zoneDiffers ? 86400 : 0;
    std::vector<FileJob> jobs;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        for (const auto &[uid, shown] : collection->joined)
            collection->touchedEvents.insert(uid);
        for (FileCollection::File &file : collection->files) {
            collection->touched.push_back(&file);
            if (file.second.earliest > file.second.latest || !overlapsWindow(file.second, to, slack))
                file.second.occurrences.clear();
            else if (!zoneDiffers && liesInside(file.second, from))
                keepOverlapping(file.second, to);
            else
                jobs.push_back({collection.get(), &file});
        }
    }
    return jobs;
}

void CalendarFiles::setEvents(std::vector<FileJob> read, std::vector<FileEvent> events)
{
    std::sort(events.begin(), events.end());
    auto event = events.begin();
    forEachCollection(std::move(read), [&](FileCollection &collection, const auto &files) {
        std::vector<FileCollection::Holder> holders;
        for (; event != events.end() && event->job.collection == &collection; ++event)
            holders.push_back({event->uid, event->job.file});
        collection.setHolders(files, std::move(holders));
    });
}

void CalendarFiles::remove(std::vector<FileJob> gone, MeetingChanges &changes)
{
    forEachCollection(std::move(gone), [&](FileCollection &collection, const auto &files) {
        collection.forget(files, changes);
    });
}

void CalendarFiles::show(MeetingChanges &changes, const JoinedReader &readJoined)
{
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        std::vector<FileCollection::File *> touched = std::exchange(collection->touched, {});
        std::sort(touched.begin(), touched.end());
        touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
        for (FileCollection::File *file : touched)
            showOwn(*collection, *file, changes);
        showJoined(*collection, changes, readJoined);
    }
}

std::vector<CalendarInfo> CalendarFiles::calendars() const
{
    std::vector<CalendarInfo> calendars;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        const FolderCalendar &folder = collection->calendar;
        if (folder.filesAreCalendars)
            appendFileCalendars(*collection, calendars);
        else
            calendars.push_back({folder.id, folder.title, folder.accountTitle, folder.properties.color});
    }
    return calendars;
}

} // namespace mivora
