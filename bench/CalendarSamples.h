#pragma once

#include <string>

/// Calendars to measure with, in temporary folders unless one is named: like real ones, most events are over
/// and don't repeat, and every file holds its time zone as servers send it.
namespace mivora::samples {

/// One event as a whole calendar file, about 1 kB. One in fifteen repeats every week; one in forty lies in
/// the week of 9 March 2026.
std::string eventFile(int number);

/// Writes `count` one-event files.
void writeFiles(const std::string &folder, int count);

/// Writes "all.ics" with `count` events.
void writeOneFile(const std::string &folder, int count);

/// A root with the calendar "work" of `count` one-event files.
std::string folderOfFiles(int count);

/// A root with the calendar "work" of one file with `count` events.
std::string folderWithOneFile(int count);

} // namespace mivora::samples
