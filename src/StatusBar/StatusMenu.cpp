#include "StatusBar/StatusMenu.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"

#include <QCoreApplication>
#include <algorithm>

namespace mivora {

namespace {

using Menu = std::vector<MenuEntry>;

/// The context of the texts for translators.
struct StatusMenu
{
    Q_DECLARE_TR_FUNCTIONS(StatusMenu)
};

MenuEntry label(const QString &title)
{
    MenuEntry entry;
    entry.title = title;
    entry.enabled = false;
    return entry;
}

MenuEntry separator()
{
    MenuEntry entry = label({});
    entry.separator = true;
    return entry;
}

MenuEntry command(const QString &title, MenuCommand command, const QString &keyEquivalent = {})
{
    MenuEntry entry;
    entry.title = title;
    entry.command = command;
    entry.keyEquivalent = keyEquivalent;
    return entry;
}

MenuEntry meetingEntry(const Meeting &meeting, const MenuContents &contents)
{
    const QString join = QStringLiteral("  · ");
    QString title = contents.formatTime(meeting.start) + QStringLiteral("  ") + titleText(meeting.title);
    if (meeting.isRunning(contents.now))
        title += join + StatusMenu::tr("now", "of a meeting that is running");
    if (!meeting.joinLink)
        return label(title);
    MenuEntry entry =
        command(title + join + serviceName(meeting.joinLink->service), MenuCommand::joinMeeting);
    entry.meeting = meeting;
    return entry;
}

void appendMeetings(Menu &menu, std::span<const Meeting> meetings, const MenuContents &contents)
{
    for (const Meeting &meeting : meetings)
        menu.push_back(meetingEntry(meeting, contents));
}

void appendDays(Menu &menu, const MenuContents &contents)
{
    if (contents.today.empty())
        menu.push_back(label(StatusMenu::tr("No more meetings today")));
    appendMeetings(menu, contents.today, contents);
    if (contents.tomorrow.empty())
        return;
    menu.push_back(separator());
    menu.push_back(label(StatusMenu::tr("Tomorrow")));
    appendMeetings(menu, contents.tomorrow, contents);
}

bool hasNoCalendarLeft(const MenuContents &contents)
{
    const auto isDisabled = [&](const CalendarInfo &calendar) {
        return contents.disabledCalendarIDs.contains(calendar.id);
    };
    return !contents.disabledCalendarIDs.empty() && std::ranges::all_of(contents.calendars, isDisabled);
}

void appendCalendarSection(Menu &menu, const MenuContents &contents)
{
    switch (contents.authorization) {
    case CalendarAuthorization::notDetermined:
        menu.push_back(command(StatusMenu::tr("Allow Calendar access…"), MenuCommand::allowCalendarAccess));
        break;
    case CalendarAuthorization::denied:
        menu.push_back(command(StatusMenu::tr("Calendar access needed…"), MenuCommand::openCalendarPrivacy));
        break;
    case CalendarAuthorization::granted:
        appendDays(menu, contents);
        if (hasNoCalendarLeft(contents))
            menu.push_back(command(StatusMenu::tr("No calendars selected — open Settings…"),
                                   MenuCommand::openCalendarSettings));
        break;
    }
}

void appendCommands(Menu &menu, const MenuContents &contents)
{
    // The blanks part the shortcut from the text: a global shortcut is no key equivalent of the menu.
    if (contents.joinHotKey)
        menu.push_back(
            command(StatusMenu::tr("Join Next Meeting") + QStringLiteral("   ") + *contents.joinHotKey,
                    MenuCommand::joinNextMeeting));
    menu.push_back(command(StatusMenu::tr("Settings…"), MenuCommand::openSettings, QStringLiteral(",")));
    if (contents.canCheckForUpdates)
        menu.push_back(command(StatusMenu::tr("Check for Updates…"), MenuCommand::checkForUpdates));
    menu.push_back(command(StatusMenu::tr("More Kelo apps…"), MenuCommand::openMakerPage));
}

} // namespace

std::vector<MenuEntry> statusMenu(const MenuContents &contents)
{
    Menu menu;
    appendCalendarSection(menu, contents);
    menu.push_back(separator());
    appendCommands(menu, contents);
    menu.push_back(separator());
    menu.push_back(command(StatusMenu::tr("Quit Mivora"), MenuCommand::quit, QStringLiteral("q")));
    return menu;
}

} // namespace mivora
