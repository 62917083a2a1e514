#include "Calendar/folder/FolderLoader.h"

#include "Calendar/CalendarLog.h"

#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mivora {

namespace {

using Clock = ChangeBatch::Clock;

/// How often folders without a watch are looked at.
constexpr std::chrono::seconds checkInterval{10};

std::string parentOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string join(const std::string &folder, const std::string &name)
{
    if (name.empty())
        return folder;
    return folder == "/" ? folder + name : folder + '/' + name;
}

bool exists(const std::string &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0;
}

std::vector<std::string> pathsOf(const std::vector<CalendarRoot> &roots)
{
    std::vector<std::string> paths;
    for (const CalendarRoot &root : roots)
        paths.push_back(root.path);
    return paths;
}

} // namespace

FolderLoader::FolderLoader(Setup setup, std::function<void()> onNews)
    : m_tree(pathsOf(setup.roots), std::move(setup.leftOut)),
      m_index(setup.roots), m_request{setup.window, std::move(setup.addresses), &m_isStopping, &m_marks},
      m_news(std::move(onNews)), m_wakeUp(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!m_wakeUp.isOpen())
        qFatal("Mivora: no event descriptor: %s", std::strerror(errno));
}

void FolderLoader::start()
{
    m_thread = std::thread([self = shared_from_this()] {
        self->run();
        const std::lock_guard lock(self->m_mutex);
        self->m_hasEnded = true;
        self->m_end.notify_all();
    });
}

void FolderLoader::stop()
{
    constexpr std::chrono::milliseconds patience{500};
    m_isStopping = true;
    m_news.close();
    wake();
    if (!m_thread.joinable())
        return;
    std::unique_lock lock(m_mutex);
    while (!m_end.wait_for(lock, patience / 10, [this] { return m_hasEnded; })) {
        if (stuckIn(patience))
            return m_thread.detach();
    }
    lock.unlock();
    m_thread.join();
}

bool FolderLoader::hasEnded() const
{
    const std::lock_guard lock(m_mutex);
    return m_hasEnded;
}

std::optional<std::string> FolderLoader::stuckIn(std::chrono::milliseconds limit) const
{
    for (const ReadingMark &mark : m_marks) {
        if (auto folder = mark.stuckIn(limit))
            return folder;
    }
    return std::nullopt;
}

void FolderLoader::setWindow(const EventWindow &window)
{
    {
        const std::lock_guard lock(m_mutex);
        m_wantedWindow = window;
    }
    wake();
}

void FolderLoader::rescan()
{
    {
        const std::lock_guard lock(m_mutex);
        m_rescanWanted = true;
    }
    wake();
}

void FolderLoader::wake() const
{
    const std::uint64_t one = 1;
    // Fails only when it was woken already.
    [[maybe_unused]] const ssize_t written = ::write(m_wakeUp.number(), &one, sizeof one);
}

void FolderLoader::run()
{
    scanAndLoad(Compare::allFiles);
    while (!m_isStopping) {
        wait();
        if (m_isStopping)
            return;
        collectChanges();
        takeOrders();
        checkUnwatched();
        readHalfWrittenAgain();
        const std::optional<Clock::time_point> due = m_batch.due();
        if (due && *due <= Clock::now())
            applyChanges();
    }
}

void FolderLoader::wait()
{
    pollfd sources[] = {{m_wakeUp.number(), POLLIN, 0}, {m_watch.descriptor(), POLLIN, 0}};
    ::poll(sources, 2, int(waitingTime().count()));
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t length = ::read(m_wakeUp.number(), &count, sizeof count);
}

std::chrono::milliseconds FolderLoader::waitingTime() const
{
    std::optional<Clock::time_point> until = m_batch.due();
    if (!m_watch.isComplete())
        until = std::min(until.value_or(m_nextCheck), m_nextCheck);
    if (m_readAgain)
        until = std::min(until.value_or(*m_readAgain), *m_readAgain);
    if (!until)
        return std::chrono::milliseconds(-1);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now());
    return std::max(left, std::chrono::milliseconds(0));
}

void FolderLoader::collectChanges()
{
    FolderWatch::Changes found = m_watch.read();
    for (const FolderChange &change : found.changes)
        sortChange(change);
    if (found.isIncomplete) {
        m_scanNeeded = Compare::allFiles;
        m_batch.note(Clock::now(), ChangeBatch::fewChanges + 1);
    }
}

void FolderLoader::sortChange(const FolderChange &change)
{
    const bool isFolder = change.kind == FolderChange::Kind::folderChanged;
    if (!isFolder && concernsOneFile(change)) {
        m_changedFiles[change.folder].insert(change.name);
        m_batch.note(Clock::now(), 1);
    } else if (isFolder || isCalendarFileName(change.name) || isPropertyFileName(change.name) ||
               m_folderTimes.contains(join(change.folder, change.name))) {
        // The folders above the roots see much that is none of ours.
        if (!m_folderTimes.contains(change.folder) && !concernsRoot(join(change.folder, change.name)))
            return;
        noteFolderChange();
    }
}

void FolderLoader::noteFolderChange()
{
    if (!m_scanNeeded)
        m_scanNeeded = Compare::newFiles;
    m_batch.note(Clock::now(), 1);
}

bool FolderLoader::concernsOneFile(const FolderChange &change)
{
    // In a root a file that comes or goes is a calendar that comes or goes, and so is a folder's first file.
    const FileCollection *collection = m_index.find(change.folder);
    if (!collection || !isCalendarFileName(change.name))
        return false;
    if (!collection->filesAreCalendars)
        return true;
    return change.kind == FolderChange::Kind::fileWritten && collection->files.contains(change.name);
}

bool FolderLoader::concernsRoot(const std::string &path) const
{
    for (const std::string &root : m_tree.roots()) {
        if (root == path || root.starts_with(path == "/" ? path : path + '/'))
            return true;
    }
    return false;
}

void FolderLoader::takeOrders()
{
    std::optional<EventWindow> window;
    bool isRescan = false;
    {
        const std::lock_guard lock(m_mutex);
        window = std::exchange(m_wantedWindow, std::nullopt);
        isRescan = std::exchange(m_rescanWanted, false);
    }
    if (window)
        applyWindow(*window);
    if (isRescan)
        scanAndLoad(Compare::allFiles);
}

void FolderLoader::applyChanges()
{
    m_batch.applied(Clock::now());
    EventChanges changes;
    std::vector<FileJob> jobs;
    if (const std::optional<Compare> compare = std::exchange(m_scanNeeded, std::nullopt))
        jobs = scan(*compare, changes);
    addChangedFiles(jobs);
    load(jobs, std::move(changes));
}

void FolderLoader::addChangedFiles(std::vector<FileJob> &jobs)
{
    std::set<const FileEntry *> already;
    for (const FileJob &job : jobs)
        already.insert(&job.entry());
    for (const auto &[folder, names] : std::exchange(m_changedFiles, {})) {
        for (const std::string &name : names) {
            const std::optional<FileJob> job = m_index.jobFor(folder, name);
            if (job && !already.contains(&job->entry()))
                jobs.push_back(*job);
        }
    }
}

void FolderLoader::noteHalfWritten(const std::vector<FileJob> &jobs)
{
    for (const FileJob &job : jobs)
        m_halfWritten[job.collection->path].insert(job.name());
    if (!jobs.empty() && !m_readAgain)
        m_readAgain = Clock::now() + halfWrittenTime;
}

void FolderLoader::readHalfWrittenAgain()
{
    if (!m_readAgain || Clock::now() < *m_readAgain)
        return;
    m_readAgain.reset();
    for (auto &[folder, names] : std::exchange(m_halfWritten, {}))
        m_changedFiles[folder].merge(names);
    m_batch.note(Clock::now(), 1);
}

void FolderLoader::applyWindow(const EventWindow &window)
{
    const std::vector<FileJob> jobs = m_index.changeWindow(m_request.window, window);
    m_request.window = window;
    load(jobs, {}, true);
}

void FolderLoader::scanAndLoad(Compare compare)
{
    EventChanges changes;
    const std::vector<FileJob> jobs = scan(compare, changes);
    load(jobs, std::move(changes));
}

std::vector<FileJob> FolderLoader::scan(Compare compare, EventChanges &changes)
{
    m_watch.beginRound();
    std::vector<FolderListing> folders = m_tree.list(
        m_marks[0], [this](const std::string &path) { m_watch.add(path, FolderWatch::Interest::content); });
    if (m_isStopping)
        return {};
    watchAboveRoots();
    m_watch.endRound();
    m_folderTimes.clear();
    m_isReadable = false;
    for (const FolderListing &folder : folders) {
        m_folderTimes.emplace(folder.path, folder.modified);
        m_isReadable = m_isReadable || folder.depth == 0;
    }
    m_nextCheck = Clock::now() + checkInterval;
    m_calendarsDiffer = true;
    return m_index.update(std::move(folders), compare, changes);
}

void FolderLoader::watchAboveRoots()
{
    // A root may come later, be renamed, or be a link that is set anew: the folder above it tells.
    for (const std::string &root : m_tree.roots()) {
        if (m_tree.isLeftOut(root))
            continue;
        const ReadingMark::Scope reading(m_marks[0], root);
        std::string above = parentOf(root);
        while (above != "/" && !exists(above))
            above = parentOf(above);
        m_watch.add(above, FolderWatch::Interest::names);
    }
}

void FolderLoader::load(const std::vector<FileJob> &jobs, EventChanges changes, bool isChange)
{
    LoadResult result = loadFiles(jobs, m_request);
    if (m_isStopping)
        return;
    for (ReadFile &read : result.read)
        read.job.collection->setVersions(*read.job.file, std::move(read.versions));
    m_calendarsDiffer = m_calendarsDiffer || result.calendarsDiffer || !result.vanished.empty();
    noteHalfWritten(result.halfWritten);
    for (const FileJob &job : result.vanished) {
        FileIndex::remove(*job.collection, std::string(job.name()), changes);
        if (job.collection->files.empty())
            noteFolderChange();
    }
    m_index.show(changes);
    publish(std::move(changes), isChange);
}

void FolderLoader::publish(EventChanges changes, bool isChange)
{
    LoaderNews news;
    if (std::exchange(m_calendarsDiffer, false)) {
        std::vector<StoreCalendar> calendars = m_index.calendars();
        if (calendars != m_calendars)
            news.calendars = m_calendars = std::move(calendars);
    }
    news.isChange = isChange || !changes.isEmpty() || news.calendars;
    news.changes = std::move(changes);
    news.status = m_isReadable ? AuthorizationStatus::fullAccess : AuthorizationStatus::denied;
    m_news.push(std::move(news));
}

void FolderLoader::checkUnwatched()
{
    if (m_watch.isComplete() || Clock::now() < m_nextCheck)
        return;
    m_nextCheck = Clock::now() + checkInterval;
    for (const auto &[path, modified] : m_folderTimes) {
        const ReadingMark::Scope reading(m_marks[0], path);
        struct stat status = {};
        if (::stat(path.c_str(), &status) != 0 || FileStamp::of(status).modified != modified)
            return scanAndLoad(Compare::allFiles);
    }
}

} // namespace mivora
