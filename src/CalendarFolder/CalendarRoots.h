#pragma once

#include <string>
#include <vector>

namespace mivora {

/// A folder in which calendars are looked for. It need not exist yet.
struct CalendarRoot
{
    /// Absolute, without a slash at its end.
    std::string path;
    /// Stands before the identifiers of the calendars in it, and keeps them apart from those of other roots.
    std::string prefix{};
};

/// The user's roots: those of $MIVORA_CALENDARS (separated by colons), else ~/.calendars and
/// $XDG_DATA_HOME/calendars. When `chosen` has any, those alone.
///
/// A prefix is the root's name and a colon, or its path and a colon where two have the same name.
/// ~/.calendars and the first chosen folder have none. So an identifier stays what it is whatever other roots
/// hold.
std::vector<CalendarRoot> calendarRoots(const std::vector<std::string> &chosen = {});

} // namespace mivora
