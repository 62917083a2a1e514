#include "KeloMenuBar/MainMenu.h"
#include "Preferences/Settings.h"
#include "Settings/SettingsUnderTest.h"
#include "support/AccessibleView.h"
#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace mivora {

namespace {

using enum SettingsPage;
using support::AccessibleView;

const QString menuBarToggle = QStringLiteral("Show the next meeting in the menu bar");
const QString shortcutToggle = QStringLiteral("Join the next meeting with a shortcut");
const QString leadPicker = QStringLiteral("Show the Join panel");
const QString lengthStepper = QStringLiteral("Title length");

/// The window on one of its pages, with the keyboard.
AccessibleView open(SettingsUnderTest &test, SettingsPage page = general)
{
    if (!test.controller.show(page) || !QTest::qWaitForWindowActive(&test.window()))
        throw std::runtime_error("the settings can't be shown");
    QTest::qWait(50);
    return AccessibleView(test.window());
}

// With Control, and with the code of the real key, which recording goes by.
void sendSpace(QWindow &window, QEvent::Type type)
{
    constexpr quint32 scanCode = KEY_SPACE + 8;
    QKeyEvent event(type, Qt::Key_Space, Qt::ControlModifier, scanCode, 0, 0);
    QCoreApplication::sendEvent(&window, &event);
}

std::vector<CalendarInfo> manyCalendars(int count)
{
    std::vector<CalendarInfo> calendars;
    for (int i = 0; i < count; ++i) {
        const std::string account = "Account " + std::to_string(10 + i % 12);
        calendars.push_back({std::to_string(i), "Calendar " + std::to_string(i), account, std::nullopt});
    }
    return calendars;
}

} // namespace

TEST(SettingsWindow, isOneThatKeepsItsPage)
{
    SettingsUnderTest test;
    ASSERT_TRUE(test.controller.show());
    QWindow *window = test.controller.window();
    EXPECT_EQ(window->title(), QStringLiteral("General"));
    EXPECT_EQ(window->size(), QSize(720, 540));
    test.controller.show(calendars);
    EXPECT_EQ(window->title(), QStringLiteral("Calendars"));
    window->close();
    test.controller.show();
    EXPECT_EQ(test.controller.window(), window);
    EXPECT_EQ(window->title(), QStringLiteral("Calendars"));
}

TEST(SettingsWindow, changesPagesFromTheSidebar)
{
    SettingsUnderTest test;
    const AccessibleView view = open(test);
    EXPECT_TRUE(view.find(QAccessible::ListItem, QStringLiteral("General"))->state().selected);
    ASSERT_TRUE(view.click(QAccessible::ListItem, QStringLiteral("Calendars")));
    EXPECT_EQ(test.window().title(), QStringLiteral("Calendars"));
    EXPECT_FALSE(view.find(QAccessible::CheckBox, menuBarToggle));
    view.type(Qt::Key_Up);
    EXPECT_EQ(test.window().title(), QStringLiteral("General"));
}

TEST(GeneralPage, writesEveryTogglesPreference)
{
    SettingsUnderTest test;
    const AccessibleView view = open(test);

    const struct
    {
        QString name;
        std::function<bool()> value;
    } rows[] = {
        {menuBarToggle, [&] { return test.prefs.showTitle(); }},
        {QStringLiteral("Launch at login"), [&] { return test.prefs.launchAtLogin(); }},
        {QStringLiteral("Also remind me for meetings without a link"),
         [&] { return test.prefs.remindWithoutLink(); }},
        {shortcutToggle, [&] { return test.prefs.joinHotKey().has_value(); }},
    };

    QStringList names;
    for (const auto &row : rows) {
        names.append(row.name);
        const bool before = row.value();
        EXPECT_EQ(view.isChecked(row.name), before) << row.name.toStdString();
        // On the switch, then on the text of its row.
        ASSERT_TRUE(view.click(QAccessible::CheckBox, row.name));
        EXPECT_EQ(row.value(), !before) << row.name.toStdString();
        EXPECT_EQ(view.isChecked(row.name), !before) << row.name.toStdString();
        ASSERT_TRUE(view.click(QAccessible::CheckBox, row.name, -3));
        EXPECT_EQ(row.value(), before) << row.name.toStdString();
    }
    EXPECT_EQ(view.names(QAccessible::CheckBox), names);
    EXPECT_EQ(test.loginItem.requests, (std::vector{true, false}));
    test.store.changeFromOutside([](DefaultsStore &store) {
        store.setValue(settingsKey::showTitle, false);
        store.setValue(settingsKey::leadMinutes, 2);
    });
    EXPECT_FALSE(view.isChecked(menuBarToggle)) << "another program has changed it";
    EXPECT_EQ(view.find(QAccessible::ComboBox, leadPicker)->text(QAccessible::Description),
              QStringLiteral("2 minutes before"));
}

TEST(GeneralPage, stepsTheTitleLengthWithinItsRange)
{
    SettingsUnderTest test;
    test.prefs.setTitleWidth(59);
    const AccessibleView view = open(test);
    const auto click = [&](double place) { return view.click(QAccessible::SpinBox, lengthStepper, place); };
    for (const int expected : {60, 60}) {
        ASSERT_TRUE(click(0.75));
        EXPECT_EQ(test.prefs.titleWidth(), expected);
    }
    test.prefs.setTitleWidth(9);
    for (const int expected : {8, 8}) {
        ASSERT_TRUE(click(0.25));
        EXPECT_EQ(test.prefs.titleWidth(), expected);
    }
    EXPECT_EQ(view.find(QAccessible::SpinBox, lengthStepper)->text(QAccessible::Description),
              QStringLiteral("8 characters"));
    test.prefs.setShowTitle(false);
    EXPECT_TRUE(view.find(QAccessible::SpinBox, lengthStepper)->state().readOnly);
    ASSERT_TRUE(click(0.75));
    EXPECT_EQ(test.prefs.titleWidth(), 8);
}

TEST(GeneralPage, picksFromLists)
{
    SettingsUnderTest test;
    const AccessibleView view = open(test);
    ASSERT_TRUE(view.click(QAccessible::ComboBox, leadPicker));
    const auto isOpen = [&] { return view.find(QAccessible::ListItem, QStringLiteral("When it starts")); };
    EXPECT_TRUE(isOpen());
    ASSERT_TRUE(view.click(QAccessible::ListItem, QStringLiteral("5 minutes before")));
    EXPECT_EQ(test.prefs.leadMinutes(), 5);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(view.focused(), leadPicker);

    const struct
    {
        std::vector<Qt::Key> keys;
        int minutes;
    } rows[] = {
        {{Qt::Key_Space, Qt::Key_Up, Qt::Key_Up, Qt::Key_Return}, 1},
        {{Qt::Key_Return, Qt::Key_Home, Qt::Key_Escape}, 1},
        {{Qt::Key_Up}, 0},
    };

    for (const auto &row : rows) {
        for (const Qt::Key key : row.keys)
            view.type(key);
        EXPECT_EQ(test.prefs.leadMinutes(), row.minutes);
        EXPECT_FALSE(isOpen());
    }

    ASSERT_TRUE(view.click(QAccessible::ComboBox, QStringLiteral("Panel position")));
    ASSERT_TRUE(view.click(QAccessible::ListItem, QStringLiteral("Bottom left")));
    EXPECT_EQ(test.prefs.panelCorner(), PanelCorner::bottomLeft);
}

TEST(GeneralPage, recordsAShortcutWhileItIsOnTheScreen)
{
    SettingsUnderTest test;
    const AccessibleView view = open(test);
    const QString recorder = QStringLiteral("Shortcut");
    test.isFree = false;
    ASSERT_TRUE(view.click(QAccessible::CheckBox, shortcutToggle));
    ASSERT_TRUE(view.find(QAccessible::PushButton, recorder));
    EXPECT_EQ(view.find(QAccessible::PushButton, recorder)->text(QAccessible::Description),
              QStringLiteral("⇧⌘J. ⇧⌘J is already in use. Choose a different shortcut."));

    QObject application;
    kelo::MainMenu::build({}).install(application);
    ASSERT_TRUE(view.click(QAccessible::PushButton, recorder));
    EXPECT_TRUE(test.service.isSuspended());
    view.type(Qt::Key_W, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_TRUE(test.window().isVisible()) << "that would have closed the window";
    test.controller.show(calendars);
    EXPECT_FALSE(test.service.isSuspended()) << "the recorder has left the screen";
}

TEST(GeneralPage, isOperatedByTheKeyboardAlone)
{
    SettingsUnderTest test;
    test.prefs.setJoinHotKey(kelo::HotKeyCombo{9, kelo::controlKey});
    const AccessibleView view = open(test);
    const QStringList stops{QStringLiteral("Settings"),
                            menuBarToggle,
                            lengthStepper,
                            QStringLiteral("Launch at login"),
                            leadPicker,
                            QStringLiteral("Panel position"),
                            QStringLiteral("Also remind me for meetings without a link"),
                            shortcutToggle,
                            QStringLiteral("Shortcut")};
    for (const QString &stop : stops) {
        EXPECT_EQ(view.focused(), stop);
        if (stop == menuBarToggle) {
            view.type(Qt::Key_Space);
            EXPECT_FALSE(test.prefs.showTitle());
            view.type(Qt::Key_Space);
        }
        if (stop != stops.last())
            view.type(Qt::Key_Tab);
    }
    view.type(Qt::Key_Space);
    ASSERT_TRUE(test.service.isSuspended()) << "it records";
    sendSpace(test.window(), QEvent::KeyPress);
    sendSpace(test.window(), QEvent::KeyRelease);
    EXPECT_EQ(test.prefs.joinHotKey(), (kelo::HotKeyCombo{49, kelo::controlKey}));
    EXPECT_FALSE(test.service.isSuspended()) << "the release doesn't begin anew";

    view.type(Qt::Key_Tab);
    EXPECT_EQ(view.focused(), QStringLiteral("Reset to ⇧⌘J"));
    view.type(Qt::Key_Space);
    EXPECT_EQ(test.prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    EXPECT_EQ(view.focused(), QStringLiteral("Shortcut")) << "the button that had the keyboard is gone";
    EXPECT_FALSE(test.service.isSuspended());
}

TEST(CalendarsPage, switchesCalendarsAndFollowsTheStore)
{
    SettingsUnderTest test;
    test.source.known = {{"h", "Home", "", std::nullopt}, {"w", "Work", "Google", Color{1, 2, 3}}};
    test.prefs.setDisabledCalendarIDs({"gone"});
    const AccessibleView view = open(test, calendars);
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Work")));
    EXPECT_EQ(test.prefs.disabledCalendarIDs(), (std::set<std::string>{"gone", "w"}));
    EXPECT_FALSE(view.isChecked(QStringLiteral("Work")));
    test.prefs.setDisabledCalendarIDs({"h"});
    EXPECT_TRUE(view.isChecked(QStringLiteral("Work")));
    EXPECT_FALSE(view.isChecked(QStringLiteral("Home")));

    test.source.known.push_back({"t", "Team", "Google", std::nullopt});
    test.controller.calendarsChanged();
    QTest::qWait(50);
    EXPECT_EQ(view.names(QAccessible::CheckBox),
              (QStringList{QStringLiteral("Home"), QStringLiteral("Work"), QStringLiteral("Team"),
                           QStringLiteral("Zoom"), QStringLiteral("Microsoft Teams")}));
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Zoom")));
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Microsoft Teams")));
    EXPECT_EQ(test.prefs.browserServices(), (std::set{Service::zoom, Service::teams}));
}

TEST(CalendarsPage, explainsMissingAccess)
{
    SettingsUnderTest test;
    test.source.access = CalendarAuthorization::denied;
    test.source.known = {{"h", "Home", "", std::nullopt}};
    const AccessibleView view = open(test, calendars);
    ASSERT_TRUE(view.click(QAccessible::PushButton, QStringLiteral("Open System Settings…")));
    EXPECT_EQ(test.opened, QStringList{QStringLiteral(
                               "x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars")});
    EXPECT_FALSE(view.find(QAccessible::CheckBox, QStringLiteral("Home")));

    test.source.access = CalendarAuthorization::granted;
    test.controller.calendarsChanged();
    QTest::qWait(50);
    EXPECT_FALSE(view.find(QAccessible::PushButton, QStringLiteral("Open System Settings…")));
    EXPECT_TRUE(view.isChecked(QStringLiteral("Home")));
}

TEST(CalendarsPage, reachesAllOfManyCalendarsByKeyboard)
{
    SettingsUnderTest test;
    constexpr int count = 45;
    test.source.known = manyCalendars(count);
    const AccessibleView view = open(test, calendars);
    EXPECT_LT(view.names(QAccessible::CheckBox).size(), 40) << "only what is in sight exists";

    QStringList reached;
    for (int i = 0; i < count + 3; ++i) {
        view.type(Qt::Key_Tab);
        reached.append(view.focused());
    }

    EXPECT_EQ(QSet<QString>(reached.begin(), reached.end()).size(), count + 3) << "each one, and once";
    EXPECT_EQ(reached.first(), QStringLiteral("Calendar 0"));
    EXPECT_EQ(reached[count], QStringLiteral("Zoom"));
    EXPECT_EQ(reached[count + 2], QStringLiteral("Settings"));

    view.type(Qt::Key_Backtab, Qt::ShiftModifier);
    view.type(Qt::Key_Backtab, Qt::ShiftModifier);
    view.type(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(view.focused(), reached[count - 1]);
    view.type(Qt::Key_Up);
    view.type(Qt::Key_Space);
    EXPECT_EQ(view.focused(), reached[count - 2]);
    const std::string id = reached[count - 2].mid(9).toStdString();
    EXPECT_EQ(test.prefs.disabledCalendarIDs(), std::set<std::string>{id});
}

} // namespace mivora
