#pragma once

#include "Calendar/folder/FileIndex.h"

#include <array>
#include <atomic>

namespace mivora {

/// What the files are read for.
struct LoadRequest
{
    EventWindow window;
    /// The user's addresses, in lower case; used where a calendar doesn't name its owner.
    std::vector<std::string> addresses;
    /// Set by another thread to end the work early.
    const std::atomic<bool> *isCancelled = nullptr;
    /// What each of the threads is reading; not null.
    std::array<ReadingMark, 2> *marks = nullptr;
};

/// How long a file that had events may be empty or end in the middle before they are dropped: some programs
/// truncate a file and then write it.
constexpr std::chrono::milliseconds halfWrittenTime{250};

/// A file whose entry is up to date, and the events that it holds.
struct ReadFile
{
    FileJob job;
    std::vector<ical::EventVersion> versions;
};

struct LoadResult
{
    std::vector<ReadFile> read;
    /// Files that were not there any more, or were no files.
    std::vector<FileJob> vanished;
    /// Files that were found half written, and kept their events; to be read again after halfWrittenTime.
    std::vector<FileJob> halfWritten;
    /// Whether a calendar's name or colour came from one of the files and is new.
    bool calendarsDiffer = false;
};

/// Reads the files of \a jobs, on two threads when there are many, and brings their entries up to date. An
/// occurrence that is as before stays the same object. Each file that can't be read or understood is logged
/// in one line.
LoadResult loadFiles(const std::vector<FileJob> &jobs, const LoadRequest &request);

} // namespace mivora
