#include "CalendarFolder/CalendarFiles.h"

#include <QString>
#include <algorithm>
#include <sys/stat.h>
#include <unordered_set>
#include <utility>

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

/// Marks the files that are no longer listed, and gives those that are new or not what they were.
void updateFiles(FileCollection &collection, const std::vector<std::string> &names, bool meetingsDiffer,
                 std::vector<FileJob> &jobs)
{
    const std::unordered_set<std::string_view> listed(names.begin(), names.end());
    for (FileCollection::File &file : collection.files) {
        file.second.isGone = !listed.contains(file.first);
        if (file.second.isGone)
            collection.touch(&file);
    }
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

bool overlapsWindow(const CalendarFile &file, const EventWindow &window, double slack)
{
    return file.earliest - slack <= secondsSinceEpoch(window.to) &&
           file.latest + slack >= secondsSinceEpoch(window.from);
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

void FileCollection::touch(File *file)
{
    touched.push_back(file);
    isShownAsItIs = false;
}

void FileCollection::show(const JoinedReader &readJoined)
{
    if (std::exchange(isShownAsItIs, true))
        return;
    forgetTouched();
    const SharedEvents shared = findShared(readJoined);
    shown.clear();
    for (const File *file : filled)
        for (const auto &[uid, meeting] : file->second.occurrences)
            if (!shared.contains(uid))
                shown.push_back(meeting);
    for (const auto &[names, occurrences] : joined)
        for (const auto &[uid, meeting] : occurrences)
            if (const auto found = shared.find(uid); found != shared.end() && found->second == &names)
                shown.push_back(meeting);
}

/// Leaves of the touched files what they hold now, and nothing else.
void FileCollection::forgetTouched()
{
    std::sort(touched.begin(), touched.end());
    const auto isTouched = [this](const File *file) {
        return std::binary_search(touched.begin(), touched.end(), file);
    };
    std::erase_if(joined, [&](const auto &entry) {
        return std::any_of(entry.first.begin(), entry.first.end(),
                           [&](const std::string &name) { return isTouched(&*files.find(name)); });
    });
    std::erase_if(filled, isTouched);
    std::erase_if(holders, [&](const Holder &holder) { return isTouched(holder.file); });
    const auto others = std::ptrdiff_t(holders.size());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
    for (File *file : std::exchange(touched, {})) {
        for (const std::size_t uid : std::exchange(file->second.events, {}))
            holders.push_back({uid, file});
        if (file->second.isGone)
            files.erase(files.find(file->first));
        else if (!file->second.occurrences.empty())
            filled.push_back(file);
    }
    std::sort(holders.begin() + others, holders.end());
    std::inplace_merge(holders.begin(), holders.begin() + others, holders.end());
    holders.erase(std::unique(holders.begin(), holders.end()), holders.end());
}

FileCollection::SharedEvents FileCollection::findShared(const JoinedReader &readJoined)
{
    SharedEvents shared;
    auto known = std::exchange(joined, {});
    for (auto first = holders.begin(); first != holders.end();) {
        const auto last =
            std::find_if(first, holders.end(), [&](const Holder &other) { return other.uid != first->uid; });
        if (last - first > 1) {
            FileNames names;
            for (auto holder = first; holder != last; ++holder)
                names.push_back(holder->file->first);
            // In the order in which they are read as one.
            std::sort(names.begin(), names.end());
            shared[first->uid] = &joined.try_emplace(std::move(names)).first->first;
        }
        first = last;
    }
    for (auto &[names, occurrences] : joined) {
        const auto before = known.find(names);
        occurrences = before == known.end() ? readJoined(*this, names) : std::move(before->second);
    }
    return shared;
}

std::vector<FileJob> CalendarFiles::update(const std::vector<FolderListing> &folders)
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
        updateFiles(*collection, folder.files, isAnother, jobs);
        m_collections.push_back(std::move(collection));
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
    const double slack = from.zone != to.zone ? 86400 : 0;
    std::vector<FileJob> jobs;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        collection->joined.clear();
        collection->isShownAsItIs = false;
        for (FileCollection::File &file : collection->files) {
            if (file.second.earliest > file.second.latest || !overlapsWindow(file.second, to, slack))
                file.second.occurrences.clear();
            else
                jobs.push_back({collection.get(), &file});
        }
    }
    return jobs;
}

Meetings CalendarFiles::meetings(const JoinedReader &readJoined)
{
    Meetings all;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        collection->show(readJoined);
        all.insert(all.end(), collection->shown.begin(), collection->shown.end());
    }
    return all;
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
