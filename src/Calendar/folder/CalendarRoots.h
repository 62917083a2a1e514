#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mivora {

/// The folders in which calendars are looked for, absolute: \a chosen alone when it is given, else those of
/// $MIVORA_CALENDARS (separated by colons), else ~/.calendars and $XDG_DATA_HOME/calendars. They need not
/// exist yet.
std::vector<std::string> calendarRoots(const std::optional<std::string> &chosen = std::nullopt);

/// \a path made absolute, without "." and "..", and without a slash at its end.
std::string absolutePath(const std::string &path);

} // namespace mivora
