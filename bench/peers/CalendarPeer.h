#pragma once

#include <ctime>
#include <string>
#include <vector>

/// What calendar programs without Mivora are made of, put to Mivora's work.
namespace peers {

/// A stretch of time, the end not included.
struct Days
{
    std::time_t from = 0;
    std::time_t to = 0;
};

/// What a list of the day shows of a meeting.
struct Occurrence
{
    std::string title;
    std::time_t begin = 0;
    std::time_t end = 0;
};

/// A calendar library as a program would use it that knows the library well.
class CalendarLibrary
{
public:
    CalendarLibrary() = default;
    virtual ~CalendarLibrary() = default;
    CalendarLibrary(const CalendarLibrary &) = delete;
    CalendarLibrary &operator=(const CalendarLibrary &) = delete;

    /// Takes in a file, in place of what was read under this name before. `text` may be changed, and ends
    /// with a zero.
    virtual void read(const std::string &name, char *text) = 0;

    /// The meetings in `days`, repeated ones with each of their days.
    virtual std::vector<Occurrence> occurrences(Days days) = 0;
};

/// The file without its definitions of zones that the system has as well: libraries know those by name, and
/// parsing the definitions takes them longer than the event. Makes room for the rest in `text`.
char *withoutKnownZones(char *text);

/// `PROGRAM FOLDER FROM TO` reads the folder's calendar files and prints how many occurrences the time has,
/// which is in seconds since 1970. With `refresh` behind it, prints the seconds that asking once more takes;
/// with `change`, the seconds from a change of one of the files until it was noticed, read, and asked about.
int runPeer(int argc, char **argv, CalendarLibrary &library);

} // namespace peers
