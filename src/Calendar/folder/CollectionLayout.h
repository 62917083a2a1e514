#pragma once

#include "Calendar/folder/CalendarRoots.h"
#include "Calendar/folder/FolderTree.h"

namespace mivora {

/// A folder whose files are events of one calendar, or, for a root, calendars themselves.
struct CollectionPlan
{
    std::string path;
    FolderIdentity identity;
    /// For a root the prefix of its files' identifiers.
    std::string calendarID;
    std::string title;
    std::optional<std::string> accountTitle;
    FolderProperties properties;
    bool filesAreCalendars = false;
    std::vector<std::string> files;
};

/// \a bytes as text for settings and JSON, whatever the file system holds.
std::string validUtf8(const std::string &bytes);

/// Tells calendars from accounts and other folders, and gives each calendar its identifier: the root's prefix
/// and the path relative to the root.
std::vector<CollectionPlan> planCollections(std::vector<FolderListing> folders,
                                            const std::vector<CalendarRoot> &roots);

} // namespace mivora
