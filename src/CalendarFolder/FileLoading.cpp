#include "CalendarFolder/FileLoading.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <thread>

namespace mivora {

namespace {

constexpr std::size_t filesPerTurn = 16;
constexpr std::size_t manyFiles = 48;
constexpr std::int64_t largeFile = 16 << 20;

/// `text` when it is an e-mail address and nothing else.
std::string addressIn(const std::string &text)
{
    const std::string address = ical::mailAddress(text);
    const std::size_t at = address.find('@');
    const bool isAddress = at > 0 && at + 1 < address.size() && at == address.rfind('@') &&
                           address.find_first_of(" \t\n") == std::string::npos;
    return isAddress ? address : std::string();
}

/// The user's addresses: the most certain one that is known.
std::vector<std::string> ownAddresses(const FolderCalendar &calendar, const std::string &fileName,
                                      const ical::CalendarText &text, const LoadRequest &request)
{
    if (calendar.properties.owner)
        return {*calendar.properties.owner};
    const std::string title =
        calendar.filesAreCalendars ? fileName.substr(0, fileName.size() - 4) : calendar.title;
    for (const std::string &name :
         {text.owner.value_or(""), calendar.filesAreCalendars ? text.name.value_or("") : title,
          calendar.filesAreCalendars ? title : text.name.value_or(""), calendar.accountTitle}) {
        if (const std::string address = addressIn(name); !address.empty())
            return {address};
    }
    return request.addresses;
}

std::vector<CalendarFile::Occurrence> occurrencesIn(ical::CalendarText &text, const FolderCalendar &calendar,
                                                    const std::string &fileName, const LoadRequest &request)
{
    std::vector<CalendarFile::Occurrence> occurrences;
    if (text.occurrences.empty())
        return occurrences;
    const std::vector<std::string> own = ownAddresses(calendar, fileName, text, request);
    const std::string calendarID = calendar.idFor(fileName);
    for (ical::Occurrence &occurrence : text.occurrences) {
        const std::size_t uid = occurrence.uid ? ical::uidHash(*occurrence.uid) : 0;
        occurrences.push_back({uid, meetingOf(std::move(occurrence), calendarID, own)});
    }
    return occurrences;
}

/// Whether nothing but white space follows the last END:VCALENDAR.
bool endsCalendar(std::string_view text)
{
    constexpr std::string_view end = "END:VCALENDAR";
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    if (last == std::string_view::npos || last + 1 < end.size())
        return false;
    return ical::isName(text.substr(last + 1 - end.size(), end.size()), end);
}

void report(const FileJob &job, const std::string &message)
{
    const std::string path = job.collection->calendar.path + '/' + job.name();
    qCWarning(calendarLog, "%s: %s", printable(path).c_str(), printable(message).c_str());
}

void reportProblems(const FileJob &job, const std::vector<ical::TextProblem> &problems)
{
    if (problems.empty())
        return;
    std::string message = "line " + std::to_string(problems.front().line) + ": " + problems.front().message;
    if (problems.size() > 1)
        message += " (and " + std::to_string(problems.size() - 1) + " more)";
    report(job, message);
}

/// One thread's share of the work.
class LoadingTurn
{
public:
    /// Whoever holds `oneLargeFile` may hold a large file in memory.
    LoadingTurn(const LoadRequest &request, std::mutex &oneLargeFile)
        : m_request(request), m_oneLargeFile(oneLargeFile)
    {
    }

    void load(const FileJob &job)
    {
        const ReadStatus status = read(job, largeFile);
        if (status != ReadStatus::tooLarge)
            return take(job, status);
        const std::lock_guard lock(m_oneLargeFile);
        take(job, read(job, FileReader::largestFile));
        m_reader.trim();
    }

private:
    ReadStatus read(const FileJob &job, std::int64_t limit)
    {
        if (std::exchange(m_collection, job.collection) != job.collection)
            m_folder = openFolder(job.collection->calendar.path);
        if (!m_folder.isOpen())
            return ReadStatus::vanished;
        return m_reader.read(m_folder.number(), job.name().c_str(), limit);
    }

    void take(const FileJob &job, ReadStatus status)
    {
        job.entry().isGone = status == ReadStatus::vanished || status == ReadStatus::notAFile;
        if (status == ReadStatus::done && isBeingWritten(job.entry()))
            return;
        job.entry().halfWrittenUntil.reset();
        if (status == ReadStatus::done)
            parse(job);
        else if (status == ReadStatus::tooLarge)
            drop(job, "the file is too large");
        else if (status == ReadStatus::failed)
            drop(job, std::string("the file can't be read: ") + std::strerror(errno));
    }

    bool isBeingWritten(CalendarFile &file) const
    {
        if (file.occurrences.empty() || endsCalendar(m_reader.text()))
            return false;
        const auto now = std::chrono::steady_clock::now();
        if (!file.halfWrittenUntil)
            file.halfWrittenUntil = now + m_request.halfWrittenTime;
        return now < *file.halfWrittenUntil;
    }

    void parse(const FileJob &job)
    {
        CalendarFile &file = job.entry();
        ical::CalendarText text = ical::readCalendarText(m_reader.text(), m_request.window);
        // Another window doesn't make an old problem new.
        if (file.stamp != m_reader.stamp())
            reportProblems(job, text.problems);
        setStamp(file);
        file.earliest = text.earliest;
        file.latest = text.latest;
        if (job.collection->calendar.filesAreCalendars) {
            file.name = text.name;
            file.color = text.color ? colorFrom(*text.color) : std::nullopt;
        } else {
            file.events = std::move(text.uids);
        }
        file.occurrences = occurrencesIn(text, job.collection->calendar, job.name(), m_request);
    }

    void drop(const FileJob &job, const std::string &reason)
    {
        if (job.entry().stamp != m_reader.stamp())
            report(job, reason);
        setStamp(job.entry());
        job.entry().occurrences.clear();
    }

    void setStamp(CalendarFile &file) const
    {
        // The clock of file systems ticks every few milliseconds.
        using namespace std::chrono;
        constexpr nanoseconds longestTick = milliseconds(20);
        file.stamp = m_reader.stamp();
        file.isStampSure =
            system_clock::now().time_since_epoch() - nanoseconds(file.stamp.modified) > longestTick;
    }

    const LoadRequest &m_request;
    std::mutex &m_oneLargeFile;
    const FileCollection *m_collection = nullptr;
    FileDescriptor m_folder;
    FileReader m_reader;
};

} // namespace

void loadFiles(const std::vector<FileJob> &jobs, const LoadRequest &request)
{
    std::atomic<std::size_t> next = 0;
    std::mutex oneLargeFile;
    const auto work = [&] {
        LoadingTurn turn(request, oneLargeFile);
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
    std::thread helper;
    if (jobs.size() >= manyFiles)
        helper = std::thread(work);
    work();
    if (helper.joinable())
        helper.join();
}

std::vector<CalendarFile::Occurrence> loadJoined(const FileCollection &collection, const FileNames &names,
                                                 const LoadRequest &request)
{
    const FileDescriptor folder = openFolder(collection.calendar.path);
    FileReader reader;
    std::string texts;
    for (const std::string &name : names) {
        if (folder.isOpen() && reader.read(folder.number(), name.c_str()) == ReadStatus::done)
            texts.append(reader.text()).append("\r\n");
    }
    ical::CalendarText text = ical::readCalendarText(texts, request.window);
    return occurrencesIn(text, collection.calendar, names.front(), request);
}

} // namespace mivora
