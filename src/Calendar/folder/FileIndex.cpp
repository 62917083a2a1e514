#include "Calendar/folder/FileIndex.h"

#include "Calendar/OccurrenceList.h"

#include <algorithm>
#include <sys/stat.h>
#include <unordered_set>

namespace mivora {

namespace {

void moveAll(StoreEvents &from, StoreEvents &to)
{
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
    from.clear();
}

/// Drops the files that are no longer listed, and enters those that are new.
void updateFiles(FileCollection &collection, const CollectionPlan &plan, std::vector<FileJob> &jobs,
                 EventChanges &changes)
{
    const std::unordered_set<std::string_view> listed(plan.files.begin(), plan.files.end());
    for (auto file = collection.files.begin(); file != collection.files.end();) {
        if (listed.contains(file->first)) {
            ++file;
            continue;
        }
        moveAll(file->second.occurrences, changes.removed);
        file = collection.files.erase(file);
    }
    for (std::size_t i = 0; i < plan.files.size(); ++i) {
        const auto [file, isNew] = collection.files.try_emplace(plan.files[i]);
        if (isNew)
            jobs.push_back({&collection, &file->first, &file->second});
    }
}

bool hasChanged(int folder, const std::string &name, const FileEntry &entry)
{
    struct stat status = {};
    return ::fstatat(folder, name.c_str(), &status, 0) != 0 || FileStamp::of(status) != entry.stamp;
}

template<typename Condition>
void addJobs(FileCollection &collection, Condition isToRead, std::vector<FileJob> &jobs)
{
    std::unordered_set<const FileEntry *> already;
    for (const FileJob &job : jobs)
        already.insert(job.entry);
    for (auto &[name, entry] : collection.files) {
        if (!already.contains(&entry) && isToRead(name, entry))
            jobs.push_back({&collection, &name, &entry});
    }
}

/// Takes over what the folder says about its calendar. Whether events have to be made anew for it.
bool updateCollection(FileCollection &collection, const CollectionPlan &plan)
{
    const bool eventsDiffer = collection.calendarID != plan.calendarID || collection.title != plan.title ||
                              collection.accountTitle != plan.accountTitle ||
                              collection.properties.owner != plan.properties.owner;
    collection.path = plan.path;
    collection.calendarID = plan.calendarID;
    collection.title = plan.title;
    collection.accountTitle = plan.accountTitle;
    collection.properties = plan.properties;
    collection.filesAreCalendars = plan.filesAreCalendars;
    return eventsDiffer;
}

bool overlapsWindow(const FileEntry &entry, const EventWindow &window, double slack)
{
    return entry.earliest - slack <= secondsSinceEpoch(window.to) &&
           entry.latest + slack >= secondsSinceEpoch(window.from);
}

bool liesInside(const FileEntry &entry, const EventWindow &window)
{
    return entry.earliest >= secondsSinceEpoch(window.from) && entry.latest <= secondsSinceEpoch(window.to);
}

void keepOverlapping(FileEntry &entry, const EventWindow &window, StoreEvents &removed)
{
    const auto gone =
        std::stable_partition(entry.occurrences.begin(), entry.occurrences.end(), [&](const auto &event) {
            return overlaps(event->start, event->end, window.from, window.to);
        });
    removed.insert(removed.end(), gone, entry.occurrences.end());
    entry.occurrences.erase(gone, entry.occurrences.end());
}

void appendFileCalendars(const FileCollection &root, std::vector<StoreCalendar> &calendars)
{
    const std::size_t first = calendars.size();
    for (const auto &[name, entry] : root.files)
        calendars.push_back({root.calendarOf(name), validUtf8(entry.name.value_or(withoutSuffix(name))),
                             std::nullopt, entry.color ? entry.color : root.properties.color});
    std::sort(calendars.begin() + std::ptrdiff_t(first), calendars.end(),
              [](const StoreCalendar &left, const StoreCalendar &right) { return left.id < right.id; });
}

} // namespace

std::string FileCollection::calendarOf(const std::string &fileName) const
{
    return filesAreCalendars ? calendarID + validUtf8(fileName) : calendarID;
}

std::string withoutSuffix(const std::string &name)
{
    return name.substr(0, name.size() - 4);
}

std::vector<FileJob> FileIndex::update(std::vector<FolderListing> folders, Compare compare,
                                       EventChanges &changes)
{
    std::unordered_map<std::string, std::unique_ptr<FileCollection>> previous;
    for (std::unique_ptr<FileCollection> &collection : m_collections)
        previous.emplace(collection->path, std::move(collection));
    m_collections.clear();

    std::vector<FileJob> jobs;
    for (CollectionPlan &plan : planCollections(std::move(folders), m_roots)) {
        std::unique_ptr<FileCollection> &known = previous[plan.path];
        const bool isNew = !known;
        if (isNew)
            known = std::make_unique<FileCollection>();
        const bool isReplaced = !isNew && known->identity != plan.identity;
        known->identity = plan.identity;
        const bool eventsDiffer = updateCollection(*known, plan) && !isNew;
        std::vector<FileJob> own;
        updateFiles(*known, plan, own, changes);
        if (eventsDiffer)
            addJobs(
                *known, [](auto &, const FileEntry &entry) { return !entry.occurrences.empty(); }, own);
        if (!isNew && (isReplaced || compare == Compare::allFiles)) {
            const FileDescriptor folder = openFolder(plan.path);
            const auto differs = [&](const std::string &name, const FileEntry &entry) {
                return hasChanged(folder.number(), name, entry);
            };
            addJobs(*known, differs, own);
        }
        jobs.insert(jobs.end(), own.begin(), own.end());
        m_collections.push_back(std::move(known));
    }
    for (auto &[path, gone] : previous) {
        if (!gone)
            continue;
        for (auto &[name, entry] : gone->files)
            moveAll(entry.occurrences, changes.removed);
    }
    return jobs;
}

std::vector<FileJob> FileIndex::changeWindow(const EventWindow &from, const EventWindow &to,
                                             EventChanges &changes)
{
    // Floating times and whole days move with the zone, by a day at most.
    const bool zoneDiffers = from.zone != to.zone;
    const double slack = zoneDiffers ? 86400 : 0;
    std::vector<FileJob> jobs;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        for (auto &[name, entry] : collection->files) {
            if (entry.earliest > entry.latest || !overlapsWindow(entry, to, slack))
                moveAll(entry.occurrences, changes.removed);
            else if (!zoneDiffers && liesInside(entry, from))
                keepOverlapping(entry, to, changes.removed);
            else
                jobs.push_back({collection.get(), &name, &entry});
        }
    }
    return jobs;
}

std::optional<FileJob> FileIndex::jobFor(const std::string &folder, const std::string &name)
{
    FileCollection *collection = find(folder);
    if (!collection)
        return std::nullopt;
    // A new file in a root is a new calendar, which comes with the listing of its folder.
    const auto file = collection->filesAreCalendars ? collection->files.find(name)
                                                    : collection->files.try_emplace(name).first;
    if (file == collection->files.end())
        return std::nullopt;
    return FileJob{collection, &file->first, &file->second};
}

FileCollection *FileIndex::find(const std::string &folder)
{
    const auto found = std::find_if(m_collections.begin(), m_collections.end(),
                                    [&](const auto &collection) { return collection->path == folder; });
    return found == m_collections.end() ? nullptr : found->get();
}

void FileIndex::remove(FileCollection &collection, const std::string &name, EventChanges &changes)
{
    const auto found = collection.files.find(name);
    if (found == collection.files.end())
        return;
    moveAll(found->second.occurrences, changes.removed);
    collection.files.erase(found);
}

std::vector<StoreCalendar> FileIndex::calendars() const
{
    std::vector<StoreCalendar> calendars;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        if (collection->filesAreCalendars)
            appendFileCalendars(*collection, calendars);
        else
            calendars.push_back({collection->calendarID, validUtf8(collection->title),
                                 collection->accountTitle, collection->properties.color});
    }
    return calendars;
}

} // namespace mivora
