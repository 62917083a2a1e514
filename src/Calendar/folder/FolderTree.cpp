#include "Calendar/folder/FolderTree.h"

#include "Calendar/CalendarColor.h"
#include "Calendar/CalendarLog.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace mivora {

namespace {

constexpr int deepestFolder = 2;
constexpr std::string_view whiteSpace = " \t\r\n\f\v";

enum class Kind { calendarFile, folder, linkedFolder, other };

bool isLeftOut(std::string_view name)
{
    return name.empty() || name.front() == '.' || name.ends_with(".tmp") || name.ends_with('~');
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

Kind kindByStatus(int folder, const char *name)
{
    struct stat status = {};
    if (::fstatat(folder, name, &status, 0) != 0)
        return Kind::other;
    if (S_ISDIR(status.st_mode))
        return Kind::linkedFolder;
    return S_ISREG(status.st_mode) && isCalendarFileName(name) ? Kind::calendarFile : Kind::other;
}

Kind kindOf(int folder, const dirent &entry)
{
    if (isLeftOut(entry.d_name))
        return Kind::other;
    switch (entry.d_type) {
    case DT_REG:
        return isCalendarFileName(entry.d_name) ? Kind::calendarFile : Kind::other;
    case DT_DIR:
        return Kind::folder;
    case DT_LNK:
    case DT_UNKNOWN:
        return kindByStatus(folder, entry.d_name);
    default:
        return Kind::other;
    }
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
    else
        listing.properties.owner = addressFrom(*text);
}

void readEntries(FolderListing &listing, DIR *stream)
{
    const int folder = ::dirfd(stream);
    std::vector<std::string> linked;
    while (const dirent *entry = ::readdir(stream)) {
        if (isPropertyFileName(entry->d_name)) {
            readProperty(listing, folder, entry->d_name);
            continue;
        }
        const Kind kind = kindOf(folder, *entry);
        if (kind == Kind::calendarFile)
            listing.files.emplace_back(entry->d_name);
        else if (kind == Kind::folder)
            listing.folders.emplace_back(entry->d_name);
        else if (kind == Kind::linkedFolder)
            linked.emplace_back(entry->d_name);
    }
    std::sort(listing.folders.begin(), listing.folders.end());
    std::sort(linked.begin(), linked.end());
    // A link to a folder that is also there under its own name must not take its place.
    listing.folders.insert(listing.folders.end(), linked.begin(), linked.end());
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
    return !isLeftOut(name) && name.size() > 4 && lowerCase(name.substr(name.size() - 4)) == ".ics";
}

bool isPropertyFileName(std::string_view name)
{
    return name == "displayname" || name == "color" || name == "owner";
}

std::optional<std::string> addressFrom(std::string_view text)
{
    std::string address = lowerCase(trimmed(text));
    if (address.starts_with("mailto:"))
        address.erase(0, 7);
    const std::size_t at = address.find('@');
    const bool isAddress = at != std::string::npos && at > 0 && at + 1 < address.size() &&
                           address.find('@', at + 1) == std::string::npos &&
                           address.find_first_of(whiteSpace) == std::string::npos;
    return isAddress ? std::optional(address) : std::nullopt;
}

FolderTree::FolderTree(std::vector<std::string> roots, std::set<std::string> leftOut)
    : m_roots(std::move(roots)), m_leftOut(std::move(leftOut))
{
}

std::vector<FolderListing> FolderTree::list(ReadingMark &mark, const BeforeListing &beforeListing)
{
    m_visited.clear();
    Round round{mark, beforeListing};
    for (std::size_t i = 0; i < m_roots.size(); ++i) {
        FolderListing root;
        root.path = m_roots[i];
        root.rootIndex = i;
        visit(std::move(root), round);
    }
    return std::move(round.found);
}

void FolderTree::visit(FolderListing folder, Round &round)
{
    if (isLeftOut(folder.path) || !read(folder, round))
        return;
    const std::size_t parent = round.found.size();
    round.found.push_back(std::move(folder));
    if (round.found[parent].depth == deepestFolder)
        return;
    for (std::size_t i = 0; i < round.found[parent].folders.size(); ++i)
        visit(childOf(round.found[parent], round.found[parent].folders[i]), round);
}

/// False when the folder can't be read, or was read already.
bool FolderTree::read(FolderListing &folder, Round &round)
{
    const ReadingMark::Scope reading(round.mark, folder.path);
    round.beforeListing(folder.path);
    FileDescriptor descriptor = openFolder(folder.path);
    struct stat status = {};
    if (!descriptor.isOpen() || ::fstat(descriptor.number(), &status) != 0) {
        reportUnreadable(folder.path);
        return false;
    }
    folder.identity = {std::uint64_t(status.st_dev), std::uint64_t(status.st_ino)};
    folder.modified = FileStamp::of(status).modified;
    if (!m_visited.insert(folder.identity).second)
        return false;
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(::fdopendir(descriptor.release()), ::closedir);
    if (!stream) {
        reportUnreadable(folder.path);
        return false;
    }
    m_reported.erase(folder.path);
    readEntries(folder, stream.get());
    return true;
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
