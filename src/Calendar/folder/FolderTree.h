#pragma once

#include "Calendar/folder/FileReading.h"
#include "Calendar/folder/ReadingMark.h"
#include "Meetings/Color.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mivora {

/// What the small files beside the events say about a folder, as vdirsyncer writes them.
struct FolderProperties
{
    std::optional<std::string> displayName;
    std::optional<Color> color;
    /// The e-mail address of the calendar's owner, in lower case.
    std::optional<std::string> owner;

    friend bool operator==(const FolderProperties &, const FolderProperties &) = default;
};

/// A folder is the same one when device and number are.
struct FolderIdentity
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    friend auto operator<=>(const FolderIdentity &, const FolderIdentity &) = default;
};

/// What lies in one folder.
struct FolderListing
{
    std::string path;
    /// Relative to its root; empty for the root itself.
    std::string relativePath;
    std::size_t rootIndex = 0;
    int depth = 0;
    FolderIdentity identity;
    std::int64_t modified = 0;
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

/// \a text as an e-mail address in lower case, without "mailto:"; nothing when it is none.
std::optional<std::string> addressFrom(std::string_view text);

/// Lists the folders of calendars below some roots: the roots, the folders in them, and the folders in these.
/// Links are followed; a folder that is reached twice is listed once.
class FolderTree
{
public:
    using BeforeListing = std::function<void(const std::string &path)>;

    /// Folders of \a leftOut are not touched.
    FolderTree(std::vector<std::string> roots, std::set<std::string> leftOut);

    const std::vector<std::string> &roots() const { return m_roots; }

    bool isLeftOut(const std::string &path) const { return m_leftOut.contains(path); }

    /// Every folder, parents before children, in order of roots and names. \a beforeListing is called for
    /// each before it is read, so that no change to it is missed. \a mark tells which one is being read. A
    /// folder that can't be read is logged once.
    std::vector<FolderListing> list(ReadingMark &mark, const BeforeListing &beforeListing);

private:
    /// What a visit hands down.
    struct Round
    {
        ReadingMark &mark;
        const BeforeListing &beforeListing;
        std::vector<FolderListing> found{};
    };

    void visit(FolderListing folder, Round &round);
    bool read(FolderListing &folder, Round &round);
    void reportUnreadable(const std::string &path);

    std::vector<std::string> m_roots;
    std::set<std::string> m_leftOut;
    std::set<FolderIdentity> m_visited;
    std::set<std::string> m_reported;
};

} // namespace mivora
