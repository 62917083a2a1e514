#include "StatusBar/StatusMenu.h"

#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"

#include <QCoreApplication>
#include <algorithm>

namespace mivora {

namespace {

/// The context of the texts for translators.
struct StatusMenu
{
    Q_DECLARE_TR_FUNCTIONS(StatusMenu)
};

void addLabel(kelo::Menu &menu, const QString &title)
{
    menu.addItem(title, {}, {}).isEnabled = false;
}

void addMeetings(kelo::Menu &menu, std::span<const Meeting> meetings, const MenuContents &contents,
                 const MenuActions &actions)
{
    const QString part = QStringLiteral("  · ");
    for (const Meeting &meeting : meetings) {
        QString title = shortTime(meeting.start, contents.zone, contents.locale) + QStringLiteral("  ") +
                        titleText(meeting.title);
        if (meeting.isRunning(contents.now))
            title += part + StatusMenu::tr("now", "of a meeting that is running");
        if (meeting.joinLink)
            menu.addItem(title + part + serviceName(meeting.joinLink->service), {},
                         [join = actions.join, meeting] { join(meeting); });
        else
            addLabel(menu, title);
    }
}

void addDays(kelo::Menu &menu, const MenuContents &contents, const MenuActions &actions)
{
    if (contents.today.empty())
        addLabel(menu, StatusMenu::tr("No more meetings today"));
    addMeetings(menu, contents.today, contents, actions);
    if (contents.tomorrow.empty())
        return;
    menu.addSeparator();
    addLabel(menu, StatusMenu::tr("Tomorrow"));
    addMeetings(menu, contents.tomorrow, contents, actions);
}

bool hasNoCalendarLeft(const MenuContents &contents)
{
    const auto isDisabled = [&](const CalendarInfo &calendar) {
        return contents.disabledCalendarIDs.contains(calendar.id);
    };
    return !contents.disabledCalendarIDs.empty() && std::ranges::all_of(contents.calendars, isDisabled);
}

void addCalendarSection(kelo::Menu &menu, const MenuContents &contents, const MenuActions &actions)
{
    const auto addNothing = [&] {
        menu.addItem(StatusMenu::tr("No calendar found…"), {}, actions.openCalendarSettings);
    };
    switch (contents.authorization) {
    case CalendarAuthorization::notDetermined:
        menu.addItem(StatusMenu::tr("Allow Calendar access…"), {}, actions.allowCalendarAccess);
        break;
    case CalendarAuthorization::denied:
        if (contents.isNothingToRead)
            addNothing();
        else
            menu.addItem(StatusMenu::tr("Calendar access needed…"), {}, actions.openCalendarPrivacy);
        break;
    case CalendarAuthorization::granted:
        addDays(menu, contents, actions);
        if (hasNoCalendarLeft(contents))
            menu.addItem(StatusMenu::tr("No calendars selected — open Settings…"), {},
                         actions.openCalendarSettings);
        else if (contents.isNothingToRead)
            addNothing();
        break;
    }
}

} // namespace

void fillStatusMenu(kelo::Menu &menu, const MenuContents &contents, const MenuActions &actions)
{
    addCalendarSection(menu, contents, actions);
    menu.addSeparator();
    // The blanks part the shortcut from the text: a global shortcut is no key equivalent of the menu.
    if (contents.joinHotKey)
        menu.addItem(
            QString(StatusMenu::tr("Join Next Meeting") + QStringLiteral("   ") + *contents.joinHotKey)
                .trimmed(),
            {}, actions.joinNext);
    menu.addItem(StatusMenu::tr("Settings…"), QStringLiteral(","), actions.openSettings);
    if (contents.canCheckForUpdates)
        menu.addItem(StatusMenu::tr("Check for Updates…"), {}, actions.checkForUpdates);
    menu.addItem(StatusMenu::tr("More Kelo apps…"), {}, actions.openMakerPage);
    menu.addSeparator();
    menu.addItem(StatusMenu::tr("Quit Mivora"), QStringLiteral("q"), actions.quit);
}

} // namespace mivora
