#pragma once

#include "Meetings/CalendarInfo.h"

#include <vector>

namespace mivora {

/// The calendars of one account.
struct AccountGroup
{
    /// Empty for calendars that belong to no account.
    std::string accountTitle;
    std::vector<CalendarInfo> calendars;

    friend bool operator==(const AccountGroup &, const AccountGroup &) = default;
};

/// The calendars by account, sorted by the account's title: case-sensitive, the same in every locale. In an
/// account they keep their order.
std::vector<AccountGroup> groupByAccount(const std::vector<CalendarInfo> &calendars);

} // namespace mivora
