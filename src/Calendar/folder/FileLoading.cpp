#include "Calendar/folder/FileLoading.h"

#include "Calendar/CalendarColor.h"
#include "Calendar/CalendarLog.h"
#include "Calendar/CurrentUser.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <mutex>
#include <thread>

namespace mivora {

namespace {

constexpr std::size_t filesPerTurn = 16;
constexpr std::size_t manyFiles = 48;
constexpr std::int64_t largeFile = 16 << 20;

/// The user's addresses: the most certain one that is known.
std::vector<std::string> ownAddresses(const FileCollection &collection, const std::string &fileName,
                                      const ical::CalendarText &text, const LoadRequest &request)
{
    std::optional<std::string> owner = collection.properties.owner;
    const auto consider = [&owner](const std::optional<std::string> &name) {
        if (!owner && name)
            owner = addressFrom(*name);
    };
    consider(text.owner);
    if (!collection.filesAreCalendars)
        consider(collection.title);
    consider(text.name);
    if (collection.filesAreCalendars)
        consider(withoutSuffix(fileName));
    consider(collection.accountTitle);
    return owner ? std::vector{*owner} : request.addresses;
}

/// One thread's share of the work.
class LoadingTurn
{
public:
    /// Whoever holds \a oneLargeFile may hold a large file in memory.
    LoadingTurn(const LoadRequest &request, ReadingMark &mark, std::mutex &oneLargeFile)
        : m_request(request), m_mark(mark), m_oneLargeFile(oneLargeFile), m_reader(&mark)
    {
    }

    void load(const FileJob &job);

    LoadResult result;

private:
    void openFolderOf(const FileJob &job);
    ReadStatus read(const FileJob &job, std::int64_t limit);
    void take(const FileJob &job, ReadStatus status);
    void parse(const FileJob &job);
    bool isBeingWritten(FileEntry &entry) const;
    void takeCalendar(FileEntry &entry, const ical::CalendarText &text);
    void takeOccurrences(const FileJob &job, ical::CalendarText &text);
    void reportProblems(const FileJob &job, const std::vector<ical::TextProblem> &problems) const;
    void drop(const FileJob &job);

    const LoadRequest &m_request;
    ReadingMark &m_mark;
    std::mutex &m_oneLargeFile;
    const FileCollection *m_collection = nullptr;
    FileDescriptor m_folder;
    FileReader m_reader;
};

/// Whether nothing but white space follows the last END:VCALENDAR.
bool endsCalendar(std::string_view text)
{
    constexpr std::string_view end = "END:VCALENDAR";
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    if (last == std::string_view::npos || last + 1 < end.size())
        return false;
    const std::string_view tail = text.substr(last + 1 - end.size(), end.size());
    return std::equal(tail.begin(), tail.end(), end.begin(),
                      [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b; });
}

void report(const FileJob &job, const std::string &message)
{
    const std::string path = job.collection->path + '/' + job.name();
    qCWarning(calendarLog, "%s: %s", printable(path).c_str(), printable(message).c_str());
}

void LoadingTurn::load(const FileJob &job)
{
    const ReadStatus status = read(job, largeFile);
    if (status != ReadStatus::tooLarge)
        return take(job, status);
    const std::lock_guard lock(m_oneLargeFile);
    take(job, read(job, FileReader::largestFile));
    m_reader.trim();
}

ReadStatus LoadingTurn::read(const FileJob &job, std::int64_t limit)
{
    const ReadingMark::Scope reading(m_mark, job.collection->path);
    openFolderOf(job);
    return m_reader.read(m_folder.number(), job.name().c_str(), limit);
}

void LoadingTurn::take(const FileJob &job, ReadStatus status)
{
    switch (status) {
    case ReadStatus::done:
        return parse(job);
    case ReadStatus::vanished:
    case ReadStatus::notAFile:
        result.vanished.push_back(job);
        return;
    case ReadStatus::tooLarge:
        if (job.entry().stamp != m_reader.stamp())
            report(job, "the file is too large");
        job.entry().stamp = m_reader.stamp();
        return drop(job);
    case ReadStatus::failed:
        report(job, std::string("the file can't be read: ") + std::strerror(errno));
        return drop(job);
    }
}

void LoadingTurn::openFolderOf(const FileJob &job)
{
    if (m_collection == job.collection)
        return;
    m_collection = job.collection;
    m_folder = openFolder(job.collection->path);
}

bool LoadingTurn::isBeingWritten(FileEntry &entry) const
{
    if (entry.occurrences.empty() || endsCalendar(m_reader.text()))
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (entry.halfWritten != m_reader.stamp()) {
        entry.halfWritten = m_reader.stamp();
        entry.halfWrittenUntil = now + halfWrittenTime;
    }
    return now < entry.halfWrittenUntil;
}

void LoadingTurn::parse(const FileJob &job)
{
    if (isBeingWritten(job.entry()))
        return result.halfWritten.push_back(job);
    ical::CalendarText text = ical::readCalendarText(m_reader.text(), m_request.window);
    // Another window doesn't make an old problem new.
    if (job.entry().stamp != m_reader.stamp())
        reportProblems(job, text.problems);
    job.entry().stamp = m_reader.stamp();
    job.entry().earliest = text.earliest;
    job.entry().latest = text.latest;
    if (job.collection->filesAreCalendars)
        takeCalendar(job.entry(), text);
    takeOccurrences(job, text);
}

void LoadingTurn::takeCalendar(FileEntry &entry, const ical::CalendarText &text)
{
    const std::optional<Color> color = text.color ? colorFrom(*text.color) : std::nullopt;
    if (entry.name == text.name && entry.color == color)
        return;
    entry.name = text.name;
    entry.color = color;
    result.calendarsDiffer = true;
}

void LoadingTurn::takeOccurrences(const FileJob &job, ical::CalendarText &text)
{
    result.read.push_back({job, std::move(text.versions)});
    const std::vector<std::string> own = ownAddresses(*job.collection, job.name(), text, m_request);
    const std::string calendarID = job.collection->calendarOf(job.name());
    StoreEvents events;
    events.reserve(text.occurrences.size());
    for (ical::Occurrence &occurrence : text.occurrences)
        events.push_back(
            std::make_shared<const StoreEvent>(storeEventOf(std::move(occurrence), calendarID, own)));
    EventChanges unused;
    keepUnchanged(std::move(job.entry().occurrences), events, unused);
    job.entry().occurrences = std::move(events);
}

void LoadingTurn::drop(const FileJob &job)
{
    job.entry().occurrences.clear();
    result.read.push_back({job, {}});
}

void LoadingTurn::reportProblems(const FileJob &job, const std::vector<ical::TextProblem> &problems) const
{
    if (problems.empty())
        return;
    std::string message = "line " + std::to_string(problems.front().line) + ": " + problems.front().message;
    if (problems.size() > 1)
        message += " (and " + std::to_string(problems.size() - 1) + " more)";
    report(job, message);
}

void merge(LoadResult &into, LoadResult from)
{
    std::move(from.read.begin(), from.read.end(), std::back_inserter(into.read));
    into.vanished.insert(into.vanished.end(), from.vanished.begin(), from.vanished.end());
    into.halfWritten.insert(into.halfWritten.end(), from.halfWritten.begin(), from.halfWritten.end());
    into.calendarsDiffer = into.calendarsDiffer || from.calendarsDiffer;
}

} // namespace

LoadResult loadFiles(const std::vector<FileJob> &jobs, const LoadRequest &request)
{
    std::atomic<std::size_t> next = 0;
    const auto work = [&](LoadingTurn &turn) {
        while (true) {
            const std::size_t first = next.fetch_add(filesPerTurn, std::memory_order_relaxed);
            for (std::size_t i = first; i < std::min(first + filesPerTurn, jobs.size()); ++i) {
                if (request.isCancelled && request.isCancelled->load(std::memory_order_relaxed))
                    return;
                turn.load(jobs[i]);
            }
            if (first + filesPerTurn >= jobs.size())
                return;
        }
    };
    std::mutex oneLargeFile;
    LoadingTurn own(request, request.marks->at(0), oneLargeFile);
    if (jobs.size() < manyFiles) {
        work(own);
        return std::move(own.result);
    }
    LoadingTurn other(request, request.marks->at(1), oneLargeFile);
    std::thread helper([&] { work(other); });
    work(own);
    helper.join();
    merge(own.result, std::move(other.result));
    return std::move(own.result);
}

} // namespace mivora
