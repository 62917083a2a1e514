#pragma once

#include "Meetings/Color.h"

#include <optional>
#include <string>

namespace mivora {

/// One of the user's calendars, as the settings list it.
struct CalendarInfo
{
    std::string id{};
    std::string title{};
    /// The account that holds the calendar; empty when there is none.
    std::string accountTitle{};
    std::optional<Color> color{};

    friend bool operator==(const CalendarInfo &, const CalendarInfo &) = default;
};

/// Whether the user lets Mivora read calendars.
enum class CalendarAuthorization { notDetermined, denied, granted };

} // namespace mivora
