#pragma once

#include "Calendar/folder/FolderTree.h"

namespace mivora {

/// A folder whose files are events of one calendar, or, for a root, calendars themselves.
struct CollectionPlan
{
    std::string path;
    FolderIdentity identity;
    std::string calendarID;
    std::string title;
    std::optional<std::string> accountTitle;
    FolderProperties properties;
    bool filesAreCalendars = false;
    std::vector<std::string> files;
    /// For a root: the calendar identifiers of the files.
    std::vector<std::string> fileIDs;
};

/// Tells calendars from accounts and other folders, and gives each calendar its identifier: the path relative
/// to the root; where an earlier root has it already, with the root's name before it.
std::vector<CollectionPlan> planCollections(std::vector<FolderListing> folders,
                                            const std::vector<std::string> &roots);

} // namespace mivora
