#include "Calendar/folder/CollectionLayout.h"

#include <QString>

namespace mivora {

namespace {

std::string_view lastComponent(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

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

CollectionPlan planOf(FolderListing folder, const std::string &accountTitle, const std::string &prefix)
{
    CollectionPlan plan;
    plan.path = folder.path;
    plan.identity = folder.identity;
    plan.properties = folder.properties;
    plan.filesAreCalendars = folder.depth == 0;
    plan.title = titleOf(folder);
    if (folder.depth == 2)
        plan.accountTitle = validUtf8(accountTitle);
    plan.calendarID = validUtf8(prefix + folder.relativePath);
    plan.files = std::move(folder.files);
    return plan;
}

} // namespace

std::string validUtf8(const std::string &bytes)
{
    return QString::fromStdString(bytes).toStdString();
}

std::vector<CollectionPlan> planCollections(std::vector<FolderListing> folders,
                                            const std::vector<CalendarRoot> &roots)
{
    std::vector<CollectionPlan> plans;
    std::string accountTitle;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (folders[i].depth == 1)
            accountTitle = titleOf(folders[i]);
        if (isCalendar(folders[i], hasCalendarsBelow(folders, i)))
            plans.push_back(planOf(std::move(folders[i]), accountTitle, roots[folders[i].rootIndex].prefix));
    }
    return plans;
}

} // namespace mivora
