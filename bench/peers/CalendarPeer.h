#pragma once

#include <cstddef>
#include <ctime>
#include <string>

/// What calendar programs without Mivora are made of, put to Mivora's work.
namespace peers {

/// A stretch of time, the end not included.
struct Days
{
    std::time_t from = 0;
    std::time_t to = 0;
};

/// A calendar library as a program would use it.
class CalendarLibrary
{
public:
    CalendarLibrary() = default;
    virtual ~CalendarLibrary() = default;
    CalendarLibrary(const CalendarLibrary &) = delete;
    CalendarLibrary &operator=(const CalendarLibrary &) = delete;

    /// Takes in a file, in place of what was read under this name before. \a text ends with a zero.
    virtual void read(const std::string &name, const char *text, std::size_t length) = 0;

    /// How many meetings there are in \a days, repeated ones with each of their days.
    virtual long occurrences(Days days) = 0;
};

/// `PROGRAM FOLDER FROM TO` reads the folder's calendar files and prints how many occurrences the time has,
/// which is in seconds since 1970. With `refresh` behind it, prints the seconds that asking once more takes;
/// with `change`, the seconds from a change of one of the files until it was noticed, read, and asked about.
int runPeer(int argc, char **argv, CalendarLibrary &library);

} // namespace peers
