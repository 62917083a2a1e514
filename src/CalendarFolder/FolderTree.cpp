#include "CalendarFolder/FolderTree.h"

#include "Calendar/CalendarLoader.h"
#include "ICalendar/CalendarText.h"
#include "Meetings/WhiteSpace.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>

namespace mivora {

namespace {

constexpr int deepestFolder = 2;

bool isLeftOut(std::string_view name)
{
    return name.empty() || name.front() == '.' || name.ends_with(".tmp") || name.ends_with('~');
}

/// The first line with anything in it of a small text file, without white space around it.
std::optional<std::string> smallText(int folder, const char *name)
{
    constexpr std::int64_t limit = 4096;
    FileReader reader;
    if (reader.read(folder, name, limit) != ReadStatus::done)
        return std::nullopt;
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    std::string_view text = reader.text();
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    text = trimmed(text);
    text = trimmed(text.substr(0, text.find_first_of("\r\n")));
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

void readProperty(FolderListing &listing, int folder, const char *name)
{
    const std::optional<std::string> text = smallText(folder, name);
    if (!text)
        return;
    if (std::strcmp(name, "displayname") == 0)
        listing.properties.displayName = text;
    else if (std::strcmp(name, "color") == 0)
        listing.properties.color = colorFrom(*text);
    else if (std::string address = ical::mailAddress(*text); !address.empty())
        listing.properties.owner = std::move(address);
}

FolderListing childOf(const FolderListing &parent, const std::string &name)
{
    FolderListing child;
    child.path = parent.path + '/' + name;
    child.relativePath = parent.relativePath.empty() ? name : parent.relativePath + '/' + name;
    child.rootIndex = parent.rootIndex;
    child.depth = parent.depth + 1;
    return child;
}

} // namespace

bool isCalendarFileName(std::string_view name)
{
    return !isLeftOut(name) && name.size() > 4 && strncasecmp(name.data() + name.size() - 4, ".ics", 4) == 0;
}

bool isPropertyFileName(std::string_view name)
{
    return name == "displayname" || name == "color" || name == "owner";
}

std::vector<FolderListing> FolderTree::list(const BeforeListing &beforeListing)
{
    m_visited.clear();
    m_awaited = {m_roots.begin(), m_roots.end()};
    for (std::size_t i = 0; i < m_roots.size(); ++i) {
        FolderListing root;
        root.path = m_roots[i];
        root.rootIndex = i;
        visit(std::move(root), beforeListing);
    }
    return std::exchange(m_found, {});
}

void FolderTree::visit(FolderListing folder, const BeforeListing &beforeListing)
{
    if (!read(folder, beforeListing))
        return;
    const std::size_t parent = m_found.size();
    m_found.push_back(std::move(folder));
    if (m_found[parent].depth == deepestFolder)
        return;
    for (std::size_t i = 0; i < m_found[parent].folders.size(); ++i)
        visit(childOf(m_found[parent], m_found[parent].folders[i]), beforeListing);
}

/// False when the folder can't be read, or was read already.
bool FolderTree::read(FolderListing &folder, const BeforeListing &beforeListing)
{
    if (!answers(folder.path))
        return false;
    beforeListing(folder.path);
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(::opendir(folder.path.c_str()), ::closedir);
    struct stat status = {};
    if (!stream || ::fstat(::dirfd(stream.get()), &status) != 0) {
        reportUnreadable(folder.path);
        return false;
    }
    if (!m_visited.emplace(status.st_dev, status.st_ino).second)
        return false;
    m_reported.erase(folder.path);
    readEntries(folder, stream.get());
    return true;
}

void FolderTree::readEntries(FolderListing &listing, DIR *stream)
{
    const int folder = ::dirfd(stream);
    std::vector<std::string> linked;
    while (const dirent *entry = ::readdir(stream)) {
        const char *const name = entry->d_name;
        if (isLeftOut(name))
            continue;
        if (entry->d_type == DT_LNK) {
            const std::string path = listing.path + '/' + name;
            followLink(path);
            if (!answers(path))
                continue;
        }
        if (isPropertyFileName(name)) {
            readProperty(listing, folder, name);
            continue;
        }
        struct stat status = {};
        status.st_mode = DTTOIF(entry->d_type);
        const bool isLink = entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN;
        if (isLink && ::fstatat(folder, name, &status, 0) != 0)
            continue;
        if (S_ISDIR(status.st_mode))
            (isLink ? linked : listing.folders).emplace_back(name);
        else if (S_ISREG(status.st_mode) && isCalendarFileName(name))
            listing.files.emplace_back(name);
    }
    std::sort(listing.folders.begin(), listing.folders.end());
    std::sort(linked.begin(), linked.end());
    // A link to a folder that is also there under its own name must not take its place.
    listing.folders.insert(listing.folders.end(), linked.begin(), linked.end());
}

void FolderTree::followLink(std::string path)
{
    namespace fs = std::filesystem;
    constexpr int longestChain = 8;
    for (int i = 0; i < longestChain; ++i) {
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            return;
        path = (fs::path(path).parent_path() / target).lexically_normal().string();
        if (path.ends_with('/'))
            path.pop_back();
        m_awaited.insert(path);
    }
}

void FolderTree::reportUnreadable(const std::string &path)
{
    const int reason = errno;
    if (reason == ENOENT || reason == ENOTDIR || !m_reported.insert(path).second)
        return;
    qCWarning(calendarLog, "%s: the folder can't be read: %s", printable(path).c_str(),
              std::strerror(reason));
}

} // namespace mivora
