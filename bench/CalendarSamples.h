#pragma once

#include <string>

/// Calendars to measure with, made anew in a temporary folder: like real ones, most events are over and don't
/// repeat, and every file holds its time zone as servers send it.
namespace mivora::samples {

/// One event as a whole calendar file, about 1 kB. One in fifteen repeats every week; one in forty lies in
/// the week of 9 March 2026.
std::string eventFile(int number);

/// A root with the calendar "work" of \a count one-event files.
std::string folderOfFiles(int count);

/// A root with the calendar "work" of one file with \a count events.
std::string folderWithOneFile(int count);

} // namespace mivora::samples
