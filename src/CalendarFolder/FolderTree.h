#pragma once

#include "CalendarFolder/FileReading.h"
#include "CalendarFolder/FolderProbe.h"
#include "Meetings/Color.h"

#include <dirent.h>
#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace mivora {

/// What the small files beside the events say about a folder, as vdirsyncer writes them.
struct FolderProperties
{
    std::optional<std::string> displayName;
    std::optional<Color> color;
    /// The e-mail address of the calendar's owner, as `ical::mailAddress()` writes it.
    std::optional<std::string> owner;

    friend bool operator==(const FolderProperties &, const FolderProperties &) = default;
};

/// What lies in one folder.
struct FolderListing
{
    std::string path;
    /// Relative to its root; empty for the root itself.
    std::string relativePath;
    std::size_t rootIndex = 0;
    int depth = 0;
    FolderProperties properties;
    std::vector<std::string> files;
    /// Folders below it, links to folders last.
    std::vector<std::string> folders;
};

/// Whether a file of that name holds calendar data. Hidden files and those that programs leave while writing
/// don't count.
bool isCalendarFileName(std::string_view name);

/// Whether a file of that name gives a property of its folder.
bool isPropertyFileName(std::string_view name);

/// Lists the folders of calendars below some roots: the roots, the folders in them, and the folders in these.
/// Links are followed; a folder that is reached twice is listed once, and one that hangs not at all.
class FolderTree
{
public:
    using BeforeListing = std::function<void(const std::string &path)>;

    FolderTree(std::vector<std::string> roots, FolderProbe probe)
        : m_roots(std::move(roots)), m_probe(std::move(probe))
    {
    }

    /// Every folder, parents before children, in order of roots and names. `beforeListing` is called for each
    /// before it is read, so that no change to it is missed. A folder that can't be read is logged once.
    std::vector<FolderListing> list(const BeforeListing &beforeListing);

    /// The roots, and the paths that links of the last list() lead to: what comes, goes or changes there
    /// changes the tree.
    const std::set<std::string> &awaited() const { return m_awaited; }

    /// Whether looking at `path` doesn't take for ever.
    bool answers(const std::string &path) { return m_probe.answers(path); }

private:
    void visit(FolderListing folder, const BeforeListing &beforeListing);
    bool read(FolderListing &folder, const BeforeListing &beforeListing);
    void readEntries(FolderListing &listing, DIR *stream);
    void followLink(std::string path);
    void reportUnreadable(const std::string &path);

    std::vector<std::string> m_roots;
    FolderProbe m_probe;
    std::set<std::string> m_awaited;
    std::vector<FolderListing> m_found;
    /// Device and number of the folders that were read.
    std::set<std::pair<std::uint64_t, std::uint64_t>> m_visited;
    std::set<std::string> m_reported;
};

} // namespace mivora
