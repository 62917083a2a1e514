#include "KeloHotkey/HotKeyService.h"
#include "Preferences/Preferences.h"
#include "Preferences/Settings.h"
#include "Settings/CalendarsPageModel.h"
#include "Settings/GeneralPageModel.h"
#include "Settings/SettingsRouter.h"
#include "support/FakeEventSource.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace mivora {

namespace {

CalendarInfo calendar(const std::string &id, const std::string &account = {})
{
    return {id, "The " + id, account, std::nullopt};
}

/// "ACCOUNT: TITLE" of each row, with a line above where an account begins and one below where it ends.
std::vector<std::string> rows(const QAbstractItemModel &list)
{
    std::vector<std::string> found;
    for (int i = 0; i < list.rowCount(); ++i) {
        const auto read = [&](int role) { return list.index(i, 0).data(role); };
        const std::string begin = read(CalendarListModel::IsFirstRole).toBool() ? "-" : "";
        const std::string end = read(CalendarListModel::IsLastRole).toBool() ? "-" : "";
        found.push_back(begin + read(CalendarListModel::AccountRole).toString().toStdString() + ": " +
                        read(CalendarListModel::TitleRole).toString().toStdString() + end);
    }
    return found;
}

using Rows = std::vector<std::string>;

} // namespace

class SettingsModelTest : public testing::Test
{
protected:
    MemoryDefaultsStore m_store{MemoryDefaultsStore::Kind::standard};
    FakeLoginItem m_loginItem;
    Preferences m_prefs{m_store, m_loginItem};
    FakeEventSource m_source;
    kelo::FakeHotKeyService m_service;
    bool m_isFree = true;
    SettingsActions m_actions{[this](const auto &) { return m_isFree; }, {}};
};

using GeneralPageModelTest = SettingsModelTest;
using CalendarsPageModelTest = SettingsModelTest;

TEST_F(GeneralPageModelTest, saysWhatIsChosen)
{
    GeneralPageModel model(m_prefs, m_service, {});
    EXPECT_EQ(model.panelCornerTexts().join(u'|'),
              QStringLiteral("Top right|Top left|Bottom right|Bottom left"));
    m_prefs.setLeadMinutes(7);
    EXPECT_EQ(model.leadMinutesIndex(), -1);
    EXPECT_EQ(model.leadMinutesText(), QStringLiteral("7 minutes before"));
    model.setLeadMinutesIndex(-1);
    model.setPanelCornerIndex(4);
    EXPECT_EQ(m_prefs.leadMinutes(), 7);
    EXPECT_EQ(m_prefs.panelCorner(), PanelCorner::topRight);
    for (const auto &[asked, stored] : {std::pair{7, 8}, {8, 8}, {60, 60}, {61, 60}}) {
        model.setTitleWidth(asked);
        EXPECT_EQ(model.titleWidthText(), QStringLiteral("%1 characters").arg(stored));
    }
}

TEST_F(GeneralPageModelTest, writesTheShortcut)
{
    GeneralPageModel model(m_prefs, m_service, {});
    QSignalSpy announced(&m_prefs, &Preferences::joinHotKeyChanged);
    QSignalSpy written(&m_prefs, &Preferences::joinHotKeyWasSet);
    EXPECT_FALSE(model.useHotKey());
    model.setUseHotKey(true);
    EXPECT_EQ(m_prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    model.recorder()->reset();
    EXPECT_EQ(announced.count(), 1);
    EXPECT_EQ(written.count(), 2) << "an equal combination is written, but not announced";

    const kelo::HotKeyCombo recorded{9, kelo::controlKey};
    Q_EMIT model.recorder()->comboChosen(recorded);
    EXPECT_EQ(m_prefs.joinHotKey(), recorded);
    model.setUseHotKey(false);
    EXPECT_TRUE(m_store.value(settingsKey::joinHotKey).isUndefined());
    model.setUseHotKey(true);
    EXPECT_EQ(m_prefs.joinHotKey(), recorded) << "the last one, not the default";
}

TEST_F(GeneralPageModelTest, tellsOfAShortcutThatIsInUseAndKeepsTheWorkingOne)
{
    GeneralPageModel model(m_prefs, m_service, m_actions.registerHotKey);
    m_isFree = false;
    model.setUseHotKey(true);
    EXPECT_TRUE(model.useHotKey()) << "so that another can be chosen";
    EXPECT_EQ(model.hotKeyConflict(), QStringLiteral("⇧⌘J is already in use. Choose a different shortcut."));
    EXPECT_EQ(m_store.data(settingsKey::joinHotKey), std::nullopt);
    model.begin();
    EXPECT_FALSE(model.useHotKey()) << "the page is built anew";

    m_isFree = true;
    const kelo::HotKeyCombo working{9, kelo::controlKey};
    Q_EMIT model.recorder()->comboChosen(working);
    EXPECT_EQ(model.hotKeyConflict(), QString());
    m_isFree = false;
    model.recorder()->reset();
    EXPECT_EQ(m_prefs.joinHotKey(), working);
    EXPECT_EQ(model.recorder()->combo(), working);
    EXPECT_NE(model.hotKeyConflict(), QString());
    model.setUseHotKey(false);
    EXPECT_EQ(model.hotKeyConflict(), QString());
}

TEST_F(GeneralPageModelTest, followsTheShortcutWithoutWriting)
{
    const kelo::HotKeyCombo stored{11, kelo::optionKey};
    m_prefs.setJoinHotKey(stored);
    GeneralPageModel model(m_prefs, m_service, {});
    EXPECT_TRUE(model.useHotKey());
    EXPECT_EQ(model.recorder()->combo(), stored);

    QSignalSpy written(&m_prefs, &Preferences::joinHotKeyWasSet);
    m_store.changeFromOutside(
        [](DefaultsStore &store) { store.setValue(settingsKey::joinHotKey, QJsonValue::Undefined); });
    EXPECT_FALSE(model.useHotKey());
    EXPECT_EQ(written.count(), 1) << "by the preferences themselves";
}

TEST_F(CalendarsPageModelTest, groupsByAccount)
{
    CalendarsPageModel model(m_prefs, m_source, m_actions);
    m_source.known = {calendar("b", "iCloud"), calendar("a", "aaa"),    calendar("z", "Zzz"),
                      calendar("x"),           calendar("c", "Google"), calendar("a2", "iCloud")};
    EXPECT_EQ(rows(*model.calendars()), Rows{});
    model.reload();
    EXPECT_EQ(rows(*model.calendars()), (Rows{"-Calendars: The x-", "-Google: The c-", "-Zzz: The z-",
                                              "-aaa: The a-", "-iCloud: The b", "iCloud: The a2-"}));
}

TEST_F(CalendarsPageModelTest, switchesCalendars)
{
    m_prefs.setDisabledCalendarIDs({"gone"});
    m_source.known = {calendar("a"), calendar("b")};
    CalendarsPageModel model(m_prefs, m_source, m_actions);
    model.reload();
    QSignalSpy changed(model.calendars(), &QAbstractItemModel::dataChanged);
    const auto isOn = [&](int row) {
        return model.calendars()->index(row, 0).data(CalendarListModel::IsOnRole).toBool();
    };

    model.setCalendarOn(1, false);
    EXPECT_EQ(storedList(m_store, settingsKey::disabledCalendarIDs),
              (QStringList{QStringLiteral("b"), QStringLiteral("gone")}));
    EXPECT_TRUE(isOn(0));
    EXPECT_FALSE(isOn(1));
    EXPECT_EQ(changed.count(), 1) << "the other rows stay as they are";
    model.setCalendarOn(1, true);
    EXPECT_EQ(m_prefs.disabledCalendarIDs(), std::set<std::string>{"gone"});
}

TEST_F(CalendarsPageModelTest, rowsThatStayKeepTheirPlace)
{
    using Calendars = std::vector<CalendarInfo>;
    const Calendars some{calendar("a"), calendar("b", "Work"), calendar("c", "Work"), calendar("d", "Zoo")};

    const struct
    {
        const char *what;
        Calendars calendars;
        int inserted;
        int removed;
    } steps[] = {
        {"all are new", some, 4, 0},
        {"nothing changed", some, 0, 0},
        {"one more in the middle", {some[0], some[1], calendar("n", "Work"), some[2], some[3]}, 1, 0},
        {"it goes again", some, 0, 1},
        {"the last goes", {some[0], some[1], some[2]}, 0, 1},
        {"all go", {}, 0, 3},
    };

    CalendarsPageModel model(m_prefs, m_source, m_actions);
    int inserted = 0;
    int removed = 0;
    const auto *list = model.calendars();
    QObject::connect(list, &QAbstractItemModel::rowsInserted, list,
                     [&](const QModelIndex &, int first, int last) { inserted += last - first + 1; });
    QObject::connect(list, &QAbstractItemModel::rowsRemoved, list,
                     [&](const QModelIndex &, int first, int last) { removed += last - first + 1; });
    for (const auto &step : steps) {
        inserted = removed = 0;
        m_source.known = step.calendars;
        model.reload();
        EXPECT_EQ(inserted, step.inserted) << step.what;
        EXPECT_EQ(removed, step.removed) << step.what;
        EXPECT_EQ(list->rowCount(), int(step.calendars.size())) << step.what;
    }
}

} // namespace mivora
