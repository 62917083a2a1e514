#include "Platform/Workspace.h"
#include "Preferences/Settings.h"
#include "Settings/SettingsUnderTest.h"
#include "support/AccessibleView.h"
#include "support/KeptViews.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace mivora {

namespace {

using enum CalendarListModel::Role;
using enum SettingsPage;
using support::AccessibleView;

const QString menuBarToggle = QStringLiteral("Show the next meeting in the tray");
const QString leadPicker = QStringLiteral("Show the Join panel");
const QString lengthStepper = QStringLiteral("Title length");
const QString shortcutToggle = QStringLiteral("Join the next meeting with a shortcut");
const QString recorder = QStringLiteral("Shortcut");
const QString accessButton = QStringLiteral("Open Settings…");
constexpr const char *recorded = "Ctrl+Space";
constexpr kelo::HotKeyCombo controlSpace{49, kelo::controlKey};

/// "ACCOUNT TITLE COLOUR" of each row, with a line where an account begins and where it ends.
std::string rows(const QAbstractItemModel &list)
{
    QStringList found;
    for (int i = 0; i < list.rowCount(); ++i) {
        const auto read = [&](int role) { return list.index(i, 0).data(role).toString(); };
        const auto line = [&](int role) { return read(role) == u"true" ? u"-" : u""; };
        found.append(line(IsFirstRole) + read(AccountRole) + u' ' + read(TitleRole) + read(ColorRole) +
                     line(IsLastRole));
    }
    return found.join(u'|').toStdString();
}

} // namespace

class SettingsTest : public testing::Test, public SettingsUnderTest
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

TEST_F(SettingsTest, isOneWindowThatKeepsItsPage)
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
    ASSERT_TRUE(view.click(QAccessible::SpinBox, lengthStepper, 0.75));
    view.type(Qt::Key_Down);
    EXPECT_EQ(first->title(), QStringLiteral("General")) << "the stepper has the keyboard";
    EXPECT_EQ(settingsPageFromRawValue(QStringLiteral("calendars")), SettingsPage::calendars);
    EXPECT_EQ(settingsPageFromRawValue(QStringLiteral("Calendars")), std::nullopt);
}

TEST_F(SettingsTest, writesEveryTogglesPreference)
{
    prefs.setJoinHotKey(controlSpace);
    loginItem.error = QStringLiteral("full");
    const AccessibleView view = open(general);
    const QString launch = QStringLiteral("Launch at login");
    ASSERT_TRUE(view.click(QAccessible::CheckBox, launch));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !view.isChecked(launch); })) << "it failed";
    loginItem.error.reset();

    const std::pair<QString, std::function<bool()>> rows[] = {
        {menuBarToggle, [&] { return prefs.showTitle(); }},
        {QStringLiteral("Hide titles during Do Not Disturb"),
         [&] { return prefs.hideTitleWhileInhibited(); }},
        {QStringLiteral("Launch at login"), [&] { return prefs.launchAtLogin(); }},
        {QStringLiteral("Also remind me for meetings without a link"),
         [&] { return prefs.remindWithoutLink(); }},
        {shortcutToggle, [&] { return prefs.joinHotKey().has_value(); }},
    };

    for (const auto &[name, value] : rows) {
        // On the switch, then on the text of its row.
        for (const double place : {0.5, -3.0}) {
            const bool before = value();
            EXPECT_EQ(view.isChecked(name), before) << name.toStdString();
            ASSERT_TRUE(view.click(QAccessible::CheckBox, name, place));
            EXPECT_EQ(value(), !before) << name.toStdString();
        }
    }
    EXPECT_EQ(prefs.joinHotKey(), controlSpace) << "the last one, not the default";
    store.setValue(settingsKey::joinHotKey, QJsonValue::Undefined);
    store.setValue(settingsKey::showTitle, false);
    store.setValue(settingsKey::leadMinutes, 2);
    Q_EMIT store.changedExternally();
    EXPECT_FALSE(view.isChecked(menuBarToggle)) << "another program has changed it";
    EXPECT_FALSE(view.isChecked(shortcutToggle));
    EXPECT_EQ(view.find(QAccessible::ComboBox, leadPicker)->text(QAccessible::Description),
              QStringLiteral("2 minutes before"));

    isFree = false;
    ASSERT_TRUE(view.click(QAccessible::CheckBox, shortcutToggle));
    EXPECT_TRUE(view.isChecked(shortcutToggle)) << "so that another can be chosen";
    EXPECT_EQ(prefs.joinHotKey(), std::nullopt);
    controller.show(calendars);
    controller.show(general);
    EXPECT_FALSE(view.isChecked(shortcutToggle)) << "the page is built anew";
}

TEST_F(SettingsTest, stepsTheTitleLengthWithinItsRange)
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

TEST_F(SettingsTest, picksFromListsWhatThereIs)
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

TEST_F(SettingsTest, isOperatedByTheKeyboardAlone)
{
    const AccessibleView view = open(general);
    QStringList stops;
    for (; view.focused() != shortcutToggle && stops.size() < 20; view.type(Qt::Key_Tab))
        stops.append(view.focused());
    EXPECT_EQ(
        stops.join(u'|').toStdString(),
        "Settings|Show the next meeting in the tray|Title length|Hide titles during Do Not Disturb|"
        "Launch at login|Show the Join panel|Panel position|Also remind me for meetings without a link");
    view.type(Qt::Key_Space);
    EXPECT_EQ(prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    view.type(Qt::Key_Tab);
    view.type(Qt::Key_Space);
    ASSERT_TRUE(service.isSuspended) << "it records";
    sendSpace(QEvent::KeyPress);
    sendSpace(QEvent::KeyRelease);
    EXPECT_EQ(prefs.joinHotKey(), controlSpace);
    EXPECT_FALSE(service.isSuspended) << "the release doesn't begin anew";

    view.type(Qt::Key_Tab);
    EXPECT_EQ(view.focused(), QStringLiteral("Reset to Shift+Super+J"));
    isFree = false;
    view.type(Qt::Key_Space);
    EXPECT_EQ(view.find(QAccessible::PushButton, recorder)->text(QAccessible::Description),
              QStringLiteral("Ctrl+Space. Shift+Super+J is already in use. Choose a different shortcut."));
    EXPECT_EQ(prefs.joinHotKey(), controlSpace) << "it stays in force";
    EXPECT_EQ(view.focused(), recorder) << "the button that had the keyboard may be gone";
    isFree = true;
    view.type(Qt::Key_Tab);
    view.type(Qt::Key_Space);
    EXPECT_EQ(prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    EXPECT_EQ(view.find(QAccessible::PushButton, recorder)->text(QAccessible::Description),
              QStringLiteral("Shift+Super+J"));
    view.type(Qt::Key_Space);
    EXPECT_TRUE(service.isSuspended);
    controller.show(calendars);
    EXPECT_FALSE(service.isSuspended) << "the recorder has left the screen";
}

TEST_F(SettingsTest, tellsHowItStandsWithTheShortcut)
{
    using enum kelo::HotKeyState::Kind;
    const QString keys = QStringLiteral("Ctrl+Alt+Q");

    const struct
    {
        kelo::HotKeyState state;
        const char *said;
        const char *shown;
    } rows[] = {
        {{off}, "Works from any app.", recorded},
        {{registered, keys}, "Works from any app.", recorded},
        {{registered, keys, true}, "Works from any app.", "Ctrl+Alt+Q"},
        {{registered, keys, true, true}, "Works from any app.", "Ctrl+Alt+Q, Change…"},
        {{registered, {}, true}, "Your desktop has set no keys", recorded},
        {{waiting}, "Waiting for your desktop", recorded},
        {{cancelled}, "You declined it.", recorded},
        {{refused}, "Your desktop refused it.", recorded},
        {{ended}, "Your desktop has ended it.", recorded},
        {{taken, keys}, "Ctrl+Alt+Q is already in use.", recorded},
        {{impossible}, "", "Bind this command to a key in the settings of your desktop: mivora join"},
    };

    prefs.setJoinHotKey(controlSpace);
    const AccessibleView view = open(general);
    for (const auto &row : rows) {
        controller.setHotKeyState(row.state);
        const auto toggle = view.find(QAccessible::CheckBox, shortcutToggle);
        EXPECT_EQ(bool(toggle), *row.said != 0);
        const QString said = toggle ? toggle->text(QAccessible::Description) : QLatin1String("");
        EXPECT_TRUE(said.startsWith(QLatin1String(row.said))) << row.said;
        QStringList shown;
        if (view.find(QAccessible::StaticText, keys))
            shown.append(keys);
        for (const QString &name : {recorder, QStringLiteral("Change…"), QStringLiteral("Copy")}) {
            const auto button = view.find(QAccessible::PushButton, name);
            if (button)
                shown.append(name == u"Change…" ? name : button->text(QAccessible::Description));
        }
        EXPECT_EQ(shown.join(QLatin1String(", ")).toStdString(), row.shown) << row.said;
    }
    ASSERT_TRUE(view.click(QAccessible::PushButton, QStringLiteral("Copy")));
    EXPECT_EQ(copied, QStringLiteral("mivora join"));
}

TEST_F(SettingsTest, switchesTheCalendarsThatItMaySee)
{
    source.access = CalendarAuthorization::denied;
    source.known = {{"h", "Home", "", std::nullopt}, {"w", "Work", "Google", std::nullopt}};
    prefs.setDisabledCalendarIDs({"gone"});
    const AccessibleView view = open(calendars);
    ASSERT_TRUE(view.click(QAccessible::PushButton, accessButton));
    EXPECT_EQ(opened, QStringList{QLatin1String(calendarPrivacyLink)});
    EXPECT_EQ(view.names(QAccessible::CheckBox).join(u'|'), QStringLiteral("Zoom|Microsoft Teams"));
    for (const auto &name :
         {QStringLiteral("Zoom"), QStringLiteral("Microsoft Teams"), QStringLiteral("Zoom")})
        ASSERT_TRUE(view.click(QAccessible::CheckBox, name));
    EXPECT_EQ(prefs.browserServices(), std::set{Service::teams}) << "on, on and off";

    source.access = CalendarAuthorization::granted;
    controller.calendarsChanged();
    view.settle();
    EXPECT_FALSE(view.find(QAccessible::PushButton, accessButton));
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Work")));
    EXPECT_EQ(prefs.disabledCalendarIDs(), (std::set<std::string>{"gone", "w"}));
    prefs.setDisabledCalendarIDs({"h"});
    EXPECT_TRUE(view.isChecked(QStringLiteral("Work")));
    EXPECT_FALSE(view.isChecked(QStringLiteral("Home")));
    source.known.push_back({"t", "Team", "Google", std::nullopt});
    controller.calendarsChanged();
    view.settle();
    EXPECT_EQ(view.names(QAccessible::CheckBox).join(u'|'),
              QStringLiteral("Home|Work|Team|Invitations that you haven't accepted|"
                             "Events in which nobody else takes part|Zoom|Microsoft Teams"));
}

TEST_F(SettingsTest, leadsToCalendarsByTheWaysThatThereAre)
{
    source.access = CalendarAuthorization::notDetermined;
    const AccessibleView view = open(calendars);
    ASSERT_TRUE(view.click(QAccessible::PushButton, QStringLiteral("Allow Calendar Access")));
    source.access = CalendarAuthorization::denied;
    missing = {QLatin1String(calendarPrivacyLink)};
    std::exchange(source.accessAnswer, nullptr)(false);
    view.settle();
    EXPECT_EQ(view.names(QAccessible::PushButton).join(u'|'), QString()) << "none that leads nowhere";

    source.isNothing = true;
    for (const char *link : {"", calendarProgramLink, internetAccountsLink}) {
        missing.append(QLatin1String(link));
        controller.show(general);
        controller.show(calendars);
        view.settle();
        for (const QString &button : view.names(QAccessible::PushButton))
            view.click(QAccessible::PushButton, button);
        opened.append(QStringLiteral("|"));
    }
    const QString accounts = QLatin1String(internetAccountsLink);
    EXPECT_EQ(opened.join(u' '), accounts + u' ' + QLatin1String(calendarProgramLink) + u" subscribe | " +
                                     accounts + u" subscribe | subscribe |");
}

TEST_F(SettingsTest, editsTheCalendarsThatAreItsOwn)
{
    source.known = {{"h", "Home", "", std::nullopt}, {"own", "Team", "", std::nullopt}};
    const AccessibleView view = open(calendars);
    for (const Qt::Key key :
         {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Return})
        view.type(key);
    EXPECT_EQ(opened.join(u' '), QStringLiteral("Team subscribe"));
}

TEST_F(SettingsTest, leavesOutByTitlesThatAreAddedAndRemoved)
{
    source.known = {{"h", "Home", "", std::nullopt}};
    const AccessibleView view = open(calendars);
    for (int i = 0; i < 5; ++i)
        view.type(Qt::Key_Tab);
    for (const char letter : {'a', '*', '\r', ' ', '\r', 'b', '\t', ' ', 'a', '*', '\r'})
        QTest::keyClick(&window(), letter);
    EXPECT_EQ(prefs.ignoredTitles().join(u'|'), QStringLiteral("b|a*"));
    QTest::keyClick(&window(), '\t');
    QTest::keyClick(&window(), ' ');
    EXPECT_EQ(prefs.ignoredTitles(), QStringList{QStringLiteral("a*")});
    EXPECT_EQ(view.focused(), QStringLiteral("Meetings with the title"));
    ASSERT_TRUE(view.click(QAccessible::CheckBox, QStringLiteral("Events in which nobody else takes part")));
    EXPECT_TRUE(prefs.ignoreWithoutOthers());
}

TEST_F(SettingsTest, listsCalendarsByAccountAndKeepsRowsThatStay)
{
    CalendarsPageModel model(prefs, source, ways, {});
    const auto *list = model.calendars();
    QSignalSpy removed(list, &QAbstractItemModel::rowsRemoved);
    QSignalSpy inserted(list, &QAbstractItemModel::rowsInserted);
    source.known = {{"1", "b", "iCloud", {}}, {"2", "a", "aaa", Color{1, 2, 3}}, {"3", "x", "", {}}};
    model.reload();
    EXPECT_EQ(rows(*list), "-Calendars x-|-aaa a#010203-|-iCloud b-");

    source.known = {
        {"1", "b", "iCloud", {}}, {"5", "z", "Zzz", {}}, {"6", "y", "Zzz", {}}, {"3", "x", "", {}}};
    model.reload();
    EXPECT_EQ(rows(*list), "-Calendars x-|-Zzz z|Zzz y-|-iCloud b-");
    EXPECT_EQ(removed.value(0).mid(1), QVariantList({1, 1}));
    EXPECT_EQ(inserted.value(1).mid(1), QVariantList({1, 2}));
}

TEST_F(SettingsTest, reachesAllOfManyCalendarsByKeyboard)
{
    constexpr int count = 45;
    for (int i = 0; i < count; ++i)
        source.known.push_back({std::to_string(i), "Calendar " + std::to_string(i),
                                "Account " + std::to_string(10 + i % 12), std::nullopt});
    source.known[22].title = "Team A";
    source.known[23].title = "Team B";
    const AccessibleView view = open(calendars);
    EXPECT_LT(view.names(QAccessible::CheckBox).size(), 40) << "only what is in sight exists";

    view.type(Qt::Key_Tab);
    const auto walk = [&](Qt::Key key, int times) {
        QStringList reached;
        for (int i = 0; i < times; ++i) {
            view.type(key);
            reached.append(view.focused());
        }
        return reached;
    };
    const QString first = view.focused();
    const QStringList others = walk(Qt::Key_Down, count - 1);
    EXPECT_EQ(QSet<QString>(others.begin(), others.end()).size(), count - 1) << "each one, and once";
    const QString last = others.last();
    EXPECT_EQ(walk(Qt::Key_Home, 1), QStringList{first});
    EXPECT_EQ(walk(Qt::Key_End, 1), QStringList{last});
    EXPECT_LT(others.indexOf(walk(Qt::Key_PageUp, 1).first()), count - 6);
    EXPECT_EQ(walk(Qt::Key_PageDown, 1), QStringList{last});
    for (const char letter : {'t', 'e', 'a', 'm', ' ', 'b'})
        QTest::keyClick(&window(), letter);
    EXPECT_EQ(view.focused(), QStringLiteral("Team B"));
    view.type(Qt::Key_Return);
    EXPECT_EQ(prefs.disabledCalendarIDs(), std::set<std::string>{"23"}) << "Return is as good as Space";
    EXPECT_EQ(walk(Qt::Key_Tab, 6).join(u'|'),
              QStringLiteral("Subscribe to a calendar…|Invitations that you haven't accepted|"
                             "Events in which nobody else takes part|Meetings with the title|"
                             "Zoom|Microsoft Teams"));
    EXPECT_EQ(walk(Qt::Key_Tab, 2).last(), QStringLiteral("Team B")) << "once round";
    EXPECT_EQ(walk(Qt::Key_Tab, 6).last(), QStringLiteral("Microsoft Teams"));
    EXPECT_EQ(walk(Qt::Key_Backtab, 6).last(), QStringLiteral("Team B")) << "one stop";
    view.type(Qt::Key_Escape);
    EXPECT_FALSE(window().isVisible());
}

} // namespace mivora
