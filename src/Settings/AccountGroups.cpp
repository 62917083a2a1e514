#include "Settings/AccountGroups.h"

#include "MeetingTexts/TitleText.h"

#include <algorithm>

namespace mivora {

std::vector<AccountGroup> groupByAccount(const std::vector<CalendarInfo> &calendars)
{
    std::vector<AccountGroup> groups;
    for (const CalendarInfo &calendar : calendars) {
        auto group = std::ranges::find(groups, calendar.accountTitle, &AccountGroup::accountTitle);
        if (group == groups.end())
            group = groups.insert(groups.end(), {calendar.accountTitle, {}});
        group->calendars.push_back(calendar);
    }
    std::ranges::stable_sort(groups, titleSortsBefore, &AccountGroup::accountTitle);
    return groups;
}

} // namespace mivora
