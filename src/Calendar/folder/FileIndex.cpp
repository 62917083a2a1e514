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

auto forget(FileCollection &collection, decltype(FileCollection::files)::iterator file, EventChanges &changes)
{
    collection.setVersions(*file, {});
    collection.touched.erase(&*file);
    moveAll(file->second.shown, changes.removed);
    return collection.files.erase(file);
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
        file = forget(collection, file, changes);
    }
    for (std::size_t i = 0; i < plan.files.size(); ++i) {
        const auto [file, isNew] = collection.files.try_emplace(plan.files[i]);
        if (isNew)
            jobs.push_back({&collection, &*file});
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
        already.insert(&job.entry());
    for (FileCollection::File &file : collection.files) {
        if (!already.contains(&file.second) && isToRead(file.first, file.second))
            jobs.push_back({&collection, &file});
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

void keepOverlapping(FileEntry &entry, const EventWindow &window)
{
    std::erase_if(entry.occurrences, [&](const auto &event) {
        return !overlaps(event->start, event->end, window.from, window.to);
    });
}

/// Of each event the latest version, in order of the identifiers.
void keepLatest(std::vector<ical::EventVersion> &versions)
{
    const auto comesFirst = [](const ical::EventVersion &left, const ical::EventVersion &right) {
        return left.uid != right.uid ? left.uid < right.uid : left.isLaterThan(right);
    };
    const auto isSame = [](const ical::EventVersion &left, const ical::EventVersion &right) {
        return left.uid == right.uid;
    };
    std::sort(versions.begin(), versions.end(), comesFirst);
    versions.erase(std::unique(versions.begin(), versions.end(), isSame), versions.end());
}

ical::EventVersion versionIn(const FileEntry &entry, std::size_t uid)
{
    const auto found =
        std::lower_bound(entry.versions.begin(), entry.versions.end(), uid,
                         [](const ical::EventVersion &version, std::size_t id) { return version.uid < id; });
    return found != entry.versions.end() && found->uid == uid ? *found : ical::EventVersion{};
}

void showLatest(const FileCollection &collection, FileCollection::File &file, EventChanges &changes)
{
    StoreEvents latest;
    for (const std::shared_ptr<const StoreEvent> &event : file.second.occurrences)
        if (!event->eventIdentifier || collection.isLatest(file, ical::uidHash(*event->eventIdentifier)))
            latest.push_back(event);
    StoreEvents shown = latest;
    keepUnchanged(std::move(file.second.shown), shown, changes);
    file.second.shown = std::move(latest);
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

void FileCollection::setVersions(File &file, std::vector<ical::EventVersion> versions)
{
    touched.insert(&file);
    if (filesAreCalendars)
        return;
    keepLatest(versions);
    if (versions == file.second.versions)
        return;
    for (const ical::EventVersion &version : std::exchange(file.second.versions, std::move(versions))) {
        for (auto [holder, last] = holders.equal_range(version.uid); holder != last;) {
            touched.insert(holder->second);
            holder = holder->second == &file ? holders.erase(holder) : std::next(holder);
        }
    }
    for (const ical::EventVersion &version : file.second.versions) {
        holders.emplace(version.uid, &file);
        for (auto [holder, last] = holders.equal_range(version.uid); holder != last; ++holder)
            touched.insert(holder->second);
    }
}

bool FileCollection::isLatest(const File &file, std::size_t uid) const
{
    const auto [first, last] = holders.equal_range(uid);
    return std::all_of(first, last, [&](const auto &holder) {
        const File &other = *holder.second;
        if (&other == &file)
            return true;
        const ical::EventVersion own = versionIn(file.second, uid), theirs = versionIn(other.second, uid);
        // Of equal ones any will do, but the same at each start.
        return own.isLaterThan(theirs) || (!theirs.isLaterThan(own) && file.first < other.first);
    });
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
            moveAll(entry.shown, changes.removed);
    }
    return jobs;
}

void FileIndex::show(EventChanges &changes)
{
    for (const std::unique_ptr<FileCollection> &collection : m_collections)
        for (FileCollection::File *file : std::exchange(collection->touched, {}))
            showLatest(*collection, *file, changes);
}

std::vector<FileJob> FileIndex::changeWindow(const EventWindow &from, const EventWindow &to)
{
    // Floating times and whole days move with the zone, by a day at most.
    const bool zoneDiffers = from.zone != to.zone;
    const double slack = zoneDiffers ? 86400 : 0;
    std::vector<FileJob> jobs;
    for (const std::unique_ptr<FileCollection> &collection : m_collections) {
        for (FileCollection::File &file : collection->files) {
            FileEntry &entry = file.second;
            collection->touched.insert(&file);
            if (entry.earliest > entry.latest || !overlapsWindow(entry, to, slack))
                entry.occurrences.clear();
            else if (!zoneDiffers && liesInside(entry, from))
                keepOverlapping(entry, to);
            else
                jobs.push_back({collection.get(), &file});
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
    return FileJob{collection, &*file};
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
    if (found != collection.files.end())
        forget(collection, found, changes);
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
