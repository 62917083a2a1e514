#include "Platform/Workspace.h"
#include "Preferences/Settings.h"
#include "Settings/SettingsUnderTest.h"
#include "support/AccessibleView.h"
#include "support/KeptViews.h"

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
const QString leadPicker = QStringLiteral("Show the Join panel");
const QString lengthStepper = QStringLiteral("Title length");
const QString recorder = QStringLiteral("Shortcut");
const QString accessButton = QStringLiteral("Open System Settings…");

} // namespace

class SettingsWindowTest : public testing::Test, public SettingsUnderTest
{
protected:
    // The window on one of its pages, with the keyboard.
    AccessibleView open(SettingsPage page)
    {
        EXPECT_TRUE(controller.show(page) && QTest::qWaitForWindowActive(&window()));
        AccessibleView view(window());
        view.settle();
        return view;
    }

    // With Control, and with the code of the real key, which recording goes by.
    void sendSpace(QEvent::Type type)
    {
        constexpr quint32 scanCode = KEY_SPACE + 8;
        QKeyEvent event(type, Qt::Key_Space, Qt::ControlModifier, scanCode, 0, 0);
        QCoreApplication::sendEvent(&window(), &event);
    }
};

TEST_F(SettingsWindowTest, isOneThatKeepsItsPage)
{
    ASSERT_TRUE(controller.show());
    const QWindow *first = &window();
    EXPECT_EQ(first->title(), QStringLiteral("General"));
    EXPECT_EQ(first->maximumSize(), QSize(720, 540));
    const AccessibleView view = open(general);
    EXPECT_TRUE(view.find(QAccessible::ListItem, QStringLiteral("General"))->state().selected);
    ASSERT_TRUE(view.click(QAccessible::ListItem, QStringLiteral("Calendars")));
    window().close();
    controller.show();
    EXPECT_EQ(&window(), first);
    EXPECT_EQ(first->title(), QStringLiteral("Calendars"));
    view.type(Qt::Key_Up);
    EXPECT_EQ(first->title(), QStringLiteral("General"));
}

TEST_F(SettingsWindowTest, writesEveryTogglesPreference)
{
    const AccessibleView view = open(general);

    const struct
    {
        QString name;
        std::function<bool()> value;
    } rows[] = {
        {menuBarToggle, [&] { return prefs.showTitle(); }},
        {QStringLiteral("Launch at login"), [&] { return prefs.launchAtLogin(); }},
        {QStringLiteral("Also remind me for meetings without a link"),
         [&] { return prefs.remindWithoutLink(); }},
        {QStringLiteral("Join the next meeting with a shortcut"),
         [&] { return prefs.joinHotKey().has_value(); }},
    };

    for (const auto &row : rows) {
        // On the switch, then on the text of its row.
        for (const double place : {0.5, -3.0}) {
            const bool before = row.value();
            EXPECT_EQ(view.isChecked(row.name), before) << row.name.toStdString();
            ASSERT_TRUE(view.click(QAccessible::CheckBox, row.name, place));
            EXPECT_EQ(row.value(), !before) << row.name.toStdString();
        }
    }
    store.changeFromOutside([](DefaultsStore &store) {
        store.setValue(settingsKey::showTitle, false);
        store.setValue(settingsKey::leadMinutes, 2);
    });
    EXPECT_FALSE(view.isChecked(menuBarToggle)) << "another program has changed it";
    EXPECT_EQ(view.find(QAccessible::ComboBox, leadPicker)->text(QAccessible::Description),
              QStringLiteral("2 minutes before"));
}

TEST_F(SettingsWindowTest, stepsTheTitleLengthWithinItsRange)
{
    const AccessibleView view = open(general);
    for (const auto &[before, place, after] :
         {std::tuple(59, 0.75, 60), {60, 0.75, 60}, {9, 0.25, 8}, {8, 0.25, 8}}) {
        prefs.setTitleWidth(before);
        ASSERT_TRUE(view.click(QAccessible::SpinBox, lengthStepper, place));
        EXPECT_EQ(prefs.titleWidth(), after);
    }
    EXPECT_EQ(view.find(QAccessible::SpinBox, lengthStepper)->text(QAccessible::Description),
              QStringLiteral("8 characters"));
    prefs.setShowTitle(false);
    ASSERT_TRUE(view.click(QAccessible::SpinBox, lengthStepper, 0.75));
    EXPECT_EQ(prefs.titleWidth(), 8) << "it is disabled";
}

TEST_F(SettingsWindowTest, picksFromLists)
{
    const AccessibleView view = open(general);
    ASSERT_TRUE(view.click(QAccessible::ComboBox, leadPicker));
    ASSERT_TRUE(view.click(QAccessible::ListItem, QStringLiteral("5 minutes before")));
    EXPECT_EQ(prefs.leadMinutes(), 5);
    EXPECT_FALSE(view.find(QAccessible::ListItem, QStringLiteral("5 minutes before")));
    EXPECT_EQ(view.focused(), leadPicker);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Up, Qt::Key_Up, Qt::Key_Return})
        view.type(key);
    EXPECT_EQ(prefs.leadMinutes(), 1);
    ASSERT_TRUE(view.click(QAccessible::ComboBox, QStringLiteral("Panel position")));
    ASSERT_TRUE(view.click(QAccessible::ListItem, QStringLiteral("Bottom left")));
    EXPECT_EQ(prefs.panelCorner(), PanelCorner::bottomLeft);
}

TEST_F(SettingsWindowTest, isOperatedByTheKeyboardAlone)
{
    prefs.setJoinHotKey(kelo::HotKeyCombo{9, kelo::controlKey});
    const AccessibleView view = open(general);
    QStringList stops;
    for (; view.focused() != recorder && stops.size() < 20; view.type(Qt::Key_Tab))
        stops.append(view.focused());
    EXPECT_EQ(stops.join(u'|').toStdString(),
              "Settings|Show the next meeting in the menu bar|Title length|Launch at login|"
              "Show the Join panel|Panel position|Also remind me for meetings without a link|"
              "Join the next meeting with a shortcut");
    view.type(Qt::Key_Space);
    ASSERT_TRUE(service.isSuspended) << "it records";
    sendSpace(QEvent::KeyPress);
    sendSpace(QEvent::KeyRelease);
    EXPECT_EQ(prefs.joinHotKey(), (kelo::HotKeyCombo{49, kelo::controlKey}));
    EXPECT_FALSE(service.isSuspended) << "the release doesn't begin anew";

    view.type(Qt::Key_Tab);
    EXPECT_EQ(view.focused(), QStringLiteral("Reset to ⇧⌘J"));
    isFree = false;
    view.type(Qt::Key_Space);
    EXPECT_EQ(view.find(QAccessible::PushButton, recorder)->text(QAccessible::Description),
              QStringLiteral("⌃Space. ⇧⌘J is already in use. Choose a different shortcut."));
    EXPECT_EQ(view.focused(), recorder) << "the button that had the keyboard may be gone";
    isFree = true;
    view.type(Qt::Key_Tab);
    view.type(Qt::Key_Space);
    EXPECT_EQ(prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    view.type(Qt::Key_Space);
    EXPECT_TRUE(service.isSuspended);
    controller.show(calendars);
    EXPECT_FALSE(service.isSuspended) << "the recorder has left the screen";
}

TEST_F(SettingsWindowTest, switchesCalendarsAndFollowsTheStore)
{
    source.known = {{"h", "Home", "", std::nullopt}, {"w", "Work", "Google", std::nullopt}};
    prefs.setDisabledCalendarIDs({"gone"});
    const AccessibleView view = open(calendars);
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Work")));
    EXPECT_EQ(prefs.disabledCalendarIDs(), (std::set<std::string>{"gone", "w"}));
    prefs.setDisabledCalendarIDs({"h"});
    EXPECT_TRUE(view.isChecked(QStringLiteral("Work")));
    EXPECT_FALSE(view.isChecked(QStringLiteral("Home")));
    source.known.push_back({"t", "Team", "Google", std::nullopt});
    controller.calendarsChanged();
    view.settle();
    EXPECT_EQ(view.names(QAccessible::CheckBox).join(u'|'),
              QStringLiteral("Home|Work|Team|Zoom|Microsoft Teams"));
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Zoom")));
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Microsoft Teams")));
    EXPECT_EQ(prefs.browserServices(), (std::set{Service::zoom, Service::teams}));
}

TEST_F(SettingsWindowTest, explainsMissingAccess)
{
    source.access = CalendarAuthorization::denied;
    source.known = {{"h", "Home", "", std::nullopt}};
    const AccessibleView view = open(calendars);
    ASSERT_TRUE(view.click(QAccessible::PushButton, accessButton));
    EXPECT_EQ(opened, QStringList{QLatin1String(calendarPrivacyLink)});
    EXPECT_EQ(view.names(QAccessible::CheckBox).join(u'|'), QStringLiteral("Zoom|Microsoft Teams"));

    source.access = CalendarAuthorization::granted;
    controller.calendarsChanged();
    view.settle();
    EXPECT_FALSE(view.find(QAccessible::PushButton, accessButton));
    EXPECT_TRUE(view.isChecked(QStringLiteral("Home")));
}

TEST_F(SettingsWindowTest, reachesAllOfManyCalendarsByKeyboard)
{
    constexpr int count = 45;
    for (int i = 0; i < count; ++i)
        source.known.push_back({std::to_string(i), "Calendar " + std::to_string(i),
                                "Account " + std::to_string(10 + i % 12), std::nullopt});
    const AccessibleView view = open(calendars);
    EXPECT_LT(view.names(QAccessible::CheckBox).size(), 40) << "only what is in sight exists";

    QStringList reached;
    for (int i = 0; i < count + 3; ++i) {
        view.type(Qt::Key_Tab);
        reached.append(view.focused());
    }
    EXPECT_EQ(QSet<QString>(reached.begin(), reached.end()).size(), count + 3) << "each one, and once";
    EXPECT_EQ(reached.first(), QStringLiteral("Calendar 0"));
    EXPECT_EQ(reached.last(), QStringLiteral("Settings"));

    for (int i = 0; i < 3; ++i)
        view.type(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(view.focused(), reached[count - 1]);
    view.type(Qt::Key_Up);
    view.type(Qt::Key_Space);
    const std::string id = reached[count - 2].mid(9).toStdString();
    EXPECT_EQ(prefs.disabledCalendarIDs(), std::set<std::string>{id});
}

} // namespace mivora
