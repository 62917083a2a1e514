#include "Calendar/folder/CollectionLayout.h"

#include <QString>
#include <unordered_map>
#include <unordered_set>

namespace mivora {

namespace {

std::string_view lastComponent(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Hands out calendar identifiers, none of them twice.
class CalendarIDs
{
public:
    explicit CalendarIDs(const std::vector<std::string> &roots) : m_roots(roots) {}

    std::string next(const FolderListing &folder, const std::string &relativePath)
    {
        // Identifiers are text for settings and JSON, whatever bytes the file system holds.
        const std::string path = QString::fromStdString(relativePath).toStdString();
        const std::string_view root = m_roots[folder.rootIndex];
        std::string candidate;
        for (const std::string_view qualifier : {std::string_view(), lastComponent(root), root}) {
            candidate = qualifier;
            candidate.append(qualifier.empty() ? "" : ":").append(path);
            if (m_taken.insert(candidate).second)
                return candidate;
        }
        while (!m_taken.insert(candidate).second)
            candidate += '\'';
        return candidate;
    }

private:
    const std::vector<std::string> &m_roots;
    std::unordered_set<std::string> m_taken;
};

bool isCalendar(const FolderListing &folder, bool hasCalendarsBelow)
{
    if (!folder.files.empty())
        return true;
    const FolderProperties &properties = folder.properties;
    return folder.depth > 0 && !hasCalendarsBelow && (properties.displayName || properties.color);
}

bool isBelow(const FolderListing &folder, const FolderListing &parent)
{
    return folder.path.starts_with(parent.path + '/');
}

/// Whether a calendar lies in the folder at \a index. Parents stand right before what they hold.
bool hasCalendarsBelow(const std::vector<FolderListing> &folders, std::size_t index)
{
    for (std::size_t i = index + 1; i < folders.size() && isBelow(folders[i], folders[index]); ++i) {
        if (isCalendar(folders[i], false))
            return true;
    }
    return false;
}

std::string titleOf(const FolderListing &folder)
{
    return folder.properties.displayName.value_or(std::string(lastComponent(folder.path)));
}

CollectionPlan planOf(FolderListing folder, const std::string &accountTitle, CalendarIDs &ids)
{
    CollectionPlan plan;
    plan.path = folder.path;
    plan.identity = folder.identity;
    plan.properties = folder.properties;
    plan.filesAreCalendars = folder.depth == 0;
    plan.title = titleOf(folder);
    if (folder.depth == 2)
        plan.accountTitle = QString::fromStdString(accountTitle).toStdString();
    if (plan.filesAreCalendars) {
        for (const std::string &name : folder.files)
            plan.fileIDs.push_back(ids.next(folder, name));
    } else {
        plan.calendarID = ids.next(folder, folder.relativePath);
    }
    plan.files = std::move(folder.files);
    return plan;
}

} // namespace

std::vector<CollectionPlan> planCollections(std::vector<FolderListing> folders,
                                            const std::vector<std::string> &roots)
{
    CalendarIDs ids(roots);
    std::vector<CollectionPlan> plans;
    std::string accountTitle;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (folders[i].depth == 1)
            accountTitle = titleOf(folders[i]);
        if (isCalendar(folders[i], hasCalendarsBelow(folders, i)))
            plans.push_back(planOf(std::move(folders[i]), accountTitle, ids));
    }
    return plans;
}

} // namespace mivora
