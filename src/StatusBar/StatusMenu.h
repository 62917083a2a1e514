#pragma once

#include "KeloMenuBar/Menu.h"
#include "Meetings/CalendarInfo.h"
#include "Meetings/Meeting.h"

#include <QLocale>
#include <QTimeZone>
#include <set>
#include <span>

/// The status item's menu: the tray draws it, the command line prints it.
namespace mivora {

/// What the menu is made from, as it is when the menu opens. The meetings must outlive it.
struct MenuContents
{
    CalendarAuthorization authorization = CalendarAuthorization::notDetermined;
    /// See `EventSource`.
    bool isNothingToRead = false;
    std::span<const Meeting> today;
    std::span<const Meeting> tomorrow;
    Timestamp now{};
    /// All calendars of the source, and the ids of those that are switched off.
    std::vector<CalendarInfo> calendars;
    std::set<std::string> disabledCalendarIDs;
    /// The keys of the registered shortcut as they are shown, empty when they aren't known; nothing when none
    /// is registered.
    std::optional<QString> joinHotKey;
    bool canCheckForUpdates = false;
    /// How times of day are written.
    QTimeZone zone = QTimeZone::utc();
    QLocale locale = QLocale::system();
};

/// What choosing an entry does.
struct MenuActions
{
    std::function<void(const Meeting &)> join;
    std::function<void()> joinNext;
    std::function<void()> allowCalendarAccess;
    std::function<void()> openCalendarPrivacy;
    std::function<void()> openCalendarSettings;
    std::function<void()> openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> openMakerPage;
    std::function<void()> quit;
};

/// Appends the whole menu, from top to bottom. What can't be chosen is disabled.
void fillStatusMenu(kelo::Menu &menu, const MenuContents &contents, const MenuActions &actions);

} // namespace mivora
