#include "CalendarFolder/FolderFollower.h"

#include <filesystem>
#include <poll.h>
#include <unistd.h>

namespace mivora {

namespace {

using std::chrono::milliseconds;

/// A change that comes alone is applied nearly at once, a burst when it is over, and a storm without end
/// about twenty times a second.
constexpr milliseconds quietTime{3};
constexpr milliseconds longestWait{50};

/// How often folders are looked at when they can't all be watched.
constexpr milliseconds checkInterval{10'000};

std::vector<std::string> pathsOf(const std::vector<CalendarRoot> &roots)
{
    std::vector<std::string> paths;
    paths.reserve(roots.size());
    for (const CalendarRoot &root : roots)
        paths.push_back(root.path);
    return paths;
}

} // namespace

FolderFollower::FolderFollower(FolderLoader::Setup setup, EventWindow window, CalendarLoader::Deliver deliver)
    : m_roots(setup.roots),
      m_deliver(std::move(deliver)), m_request{std::move(window), std::move(setup.addresses),
                                               setup.halfWrittenTime, &m_isStopping},
      m_files(setup.roots), m_tree(pathsOf(setup.roots), FolderProbe([wakeUp = m_wakeUp] {
                                       wakeUp->isScanWanted = true;
                                       wakeUp->wake();
                                   }))
{
    for (std::string &address : m_request.addresses)
        address = ical::mailAddress(address);
}

void FolderFollower::run()
{
    apply();
    while (!m_isStopping) {
        wait();
        collectChanges();
        takeRequests();
        if (!m_isStopping && m_due && *m_due <= Clock::now())
            apply();
    }
}

void FolderFollower::stop()
{
    m_isStopping = true;
    m_wakeUp->wake();
}

void FolderFollower::setWindow(const EventWindow &window)
{
    {
        const std::lock_guard lock(m_mutex);
        m_wantedWindow = window;
    }
    m_wakeUp->wake();
}

void FolderFollower::WakeUp::wake() const
{
    const std::uint64_t one = 1;
    // Fails only when it was woken already.
    [[maybe_unused]] const ssize_t written = ::write(descriptor.number(), &one, sizeof one);
}

void FolderFollower::wait() const
{
    int time = -1;
    if (m_due)
        time = int(std::max<std::int64_t>(0, std::chrono::ceil<milliseconds>(*m_due - Clock::now()).count()));
    pollfd sources[] = {{m_wakeUp->descriptor.number(), POLLIN, 0}, {m_watch.descriptor(), POLLIN, 0}};
    ::poll(sources, 2, time);
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t length = ::read(m_wakeUp->descriptor.number(), &count, sizeof count);
}

void FolderFollower::collectChanges()
{
    FolderWatch::Changes found = m_watch.read();
    for (const FolderChange &change : found.changes)
        sortChange(change);
    if (found.isIncomplete) {
        m_isScanNeeded = true;
        noteChange();
    }
}

void FolderFollower::sortChange(const FolderChange &change)
{
    if (!change.isLinked && isCalendarFileName(change.name) && m_folders.contains(change.folder) &&
        !m_tree.awaited().contains(change.path()) && !m_folders.contains(change.path()))
        m_changed[change.folder].insert(change.name);
    else if (concernsFolders(change.path()) ||
             (m_folders.contains(change.folder) &&
              (change.isLinked || isPropertyFileName(change.name) || isCalendarFileName(change.name))))
        m_isScanNeeded = true;
    else
        return;
    noteChange();
}

/// Whether a folder, a root or what a link leads to stands at `path` or below it. The folders above these see
/// much that is none of ours.
bool FolderFollower::concernsFolders(const std::string &path) const
{
    const std::string below = path + '/';
    const auto standsIn = [&](const std::set<std::string> &paths) {
        const auto next = paths.lower_bound(below);
        return paths.contains(path) || (next != paths.end() && next->starts_with(below));
    };
    return standsIn(m_folders) || standsIn(m_tree.awaited());
}

void FolderFollower::noteChange()
{
    const auto now = Clock::now();
    if (!m_latestDue)
        m_latestDue = now + longestWait;
    m_due = std::min(now + quietTime, *m_latestDue);
}

void FolderFollower::takeRequests()
{
    std::optional<EventWindow> window;
    {
        const std::lock_guard lock(m_mutex);
        window = std::exchange(m_wantedWindow, std::nullopt);
    }
    if (m_wakeUp->isScanWanted.exchange(false)) {
        m_isScanNeeded = true;
        noteChange();
    }
    if (!window)
        return;
    const std::vector<FileJob> jobs = m_files.changeWindow(m_request.window, *window);
    m_request.window = *window;
    load(jobs);
}

void FolderFollower::apply()
{
    m_due.reset();
    m_latestDue.reset();
    std::vector<FileJob> jobs;
    const bool isToScan = std::exchange(m_isScanNeeded, false);
    if (isToScan)
        jobs = scan();
    // What was written is read even if it looks unchanged.
    const std::vector<FileJob> changed = changedFiles(isToScan);
    jobs.insert(jobs.end(), changed.begin(), changed.end());
    std::sort(jobs.begin(), jobs.end());
    jobs.erase(std::unique(jobs.begin(), jobs.end()), jobs.end());
    load(jobs);
    if (!m_watch.isComplete()) {
        m_isScanNeeded = true;
        m_due = std::min(m_due.value_or(Clock::time_point::max()), Clock::now() + checkInterval);
    }
}

std::vector<FileJob> FolderFollower::scan()
{
    m_watch.beginRound();
    const std::vector<FolderListing> folders =
        m_tree.list([this](const std::string &path) { m_watch.add(path, FolderWatch::Interest::content); });
    const std::vector<std::string> roots = pathsOf(m_roots);
    for (const std::string &path : m_tree.awaited()) {
        const bool isRoot = std::find(roots.begin(), roots.end(), path) != roots.end();
        watchAbove(path, isRoot ? FolderWatch::Interest::names : FolderWatch::Interest::content);
    }
    m_watch.endRound();
    m_folders.clear();
    m_isReadable = false;
    for (const FolderListing &folder : folders) {
        m_folders.insert(folder.path);
        m_isReadable = m_isReadable || folder.depth == 0;
    }
    return m_files.update(folders);
}

void FolderFollower::watchAbove(const std::string &path, FolderWatch::Interest interest)
{
    // What is not there may come later, be renamed, or be a link that is set anew: the folder above it tells.
    std::filesystem::path above = std::filesystem::path(path).parent_path();
    std::error_code error;
    while (m_tree.answers(above.string()) && above.has_relative_path() &&
           !std::filesystem::exists(above, error))
        above = above.parent_path();
    if (m_tree.answers(above.string()))
        m_watch.add(above.string(), interest);
}

std::vector<FileJob> FolderFollower::changedFiles(bool isJustScanned)
{
    std::vector<FileJob> jobs;
    for (const auto &[folder, names] : std::exchange(m_changed, {})) {
        for (const std::string &name : names) {
            if (const std::optional<FileJob> job = m_files.jobFor(folder, name)) {
                jobs.push_back(*job);
            } else if (!isJustScanned) {
                m_isScanNeeded = true;
                noteChange();
            }
        }
    }
    return jobs;
}

void FolderFollower::load(const std::vector<FileJob> &jobs)
{
    loadFiles(jobs, m_request);
    if (m_isStopping)
        return;
    for (const FileJob &job : jobs) {
        if (!job.entry().halfWrittenUntil) {
            job.collection->touch(job.file);
            continue;
        }
        m_changed[job.collection->calendar.path].insert(job.name());
        m_due = std::min(m_due.value_or(Clock::time_point::max()), Clock::now() + m_request.halfWrittenTime);
    }
    Meetings meetings = m_files.meetings([this](const FileCollection &collection, const FileNames &names) {
        return loadJoined(collection, names, m_request);
    });
    // A folder without files is no calendar.
    if (std::any_of(jobs.begin(), jobs.end(),
                    [](const FileJob &job) { return job.collection->files.empty(); })) {
        m_isScanNeeded = true;
        noteChange();
    }
    m_deliver({.meetings = std::move(meetings),
               .calendars = m_files.calendars(),
               .status = m_isReadable ? AuthorizationStatus::fullAccess : AuthorizationStatus::denied});
}

} // namespace mivora
