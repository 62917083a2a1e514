#pragma once

#include "Meetings/CalendarInfo.h"
#include "Meetings/Meeting.h"

#include <QString>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

/// The status item's menu, as data: the tray draws it, the command line prints it. Pure functions.
namespace mivora {

/// What choosing a menu entry does.
enum class MenuCommand {
    none,
    allowCalendarAccess,
    openCalendarPrivacy,
    openCalendarSettings,
    joinMeeting,
    joinNextMeeting,
    openSettings,
    checkForUpdates,
    openMakerPage,
    quit
};

struct MenuEntry
{
    /// One line; empty for a separator.
    QString title;
    bool enabled = true;
    bool separator = false;
    /// The key that chooses the entry together with the command modifier; empty when there is none.
    QString keyEquivalent;
    MenuCommand command = MenuCommand::none;
    /// The meeting that joinMeeting joins.
    std::optional<Meeting> meeting;

    friend bool operator==(const MenuEntry &, const MenuEntry &) = default;
};

/// What the menu is made from, as it is when the menu opens. The lists must outlive it.
struct MenuContents
{
    CalendarAuthorization authorization = CalendarAuthorization::notDetermined;
    std::span<const Meeting> today;
    std::span<const Meeting> tomorrow;
    Timestamp now{};
    /// All calendars of the source, and the ids of those that are switched off.
    std::span<const CalendarInfo> calendars;
    std::set<std::string> disabledCalendarIDs;
    /// The registered shortcut as it is shown; nothing when none is registered.
    std::optional<QString> joinHotKey;
    bool canCheckForUpdates = false;
    /// Writes the time of day.
    std::function<QString(Timestamp)> formatTime;
};

/// The whole menu, from top to bottom.
std::vector<MenuEntry> statusMenu(const MenuContents &contents);

} // namespace mivora
