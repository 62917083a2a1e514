#pragma once

#include "CalendarFolder/CalendarFiles.h"

#include <atomic>

namespace mivora {

/// What the files are read for.
struct LoadRequest
{
    EventWindow window;
    /// The user's addresses, as `ical::mailAddress()` writes them; used where a calendar names no owner.
    std::vector<std::string> addresses;
    /// How long a file that had events may be empty or end in the middle before they are dropped: some
    /// programs truncate a file and then write it.
    std::chrono::milliseconds halfWrittenTime;
    /// Set by another thread to end the work early.
    const std::atomic<bool> *isCancelled = nullptr;
};

/// Reads the files of `jobs`, on two threads when there are many, and brings them up to date. Those that were
/// found half written keep their events, and are to be read again after the time for that. Each file that
/// can't be read or understood is logged in one line.
void loadFiles(const std::vector<FileJob> &jobs, const LoadRequest &request);

/// Reads the files `names` of a folder, which hold the same events in parts or in versions, as if they were
/// one.
std::vector<CalendarFile::Occurrence> loadJoined(const FileCollection &collection, const FileNames &names,
                                                 const LoadRequest &request);

} // namespace mivora
