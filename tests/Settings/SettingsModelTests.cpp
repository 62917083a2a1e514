#include "Preferences/Settings.h"
#include "Settings/SettingsUnderTest.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace mivora {

namespace {

CalendarInfo calendar(const std::string &id, const std::string &account = {})
{
    return {id, "The " + id, account, std::nullopt};
}

/// "ACCOUNT: TITLE" of each row, with a line where an account begins and where it ends.
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

constexpr kelo::HotKeyCombo working{9, kelo::controlKey};

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
    GeneralPageModel m_page{m_prefs, m_service, [this](const auto &) { return m_isFree; }};
};

TEST_F(SettingsModelTest, saysWhatIsChosenAndTakesWhatThereIs)
{
    m_prefs.setLeadMinutes(7);
    EXPECT_EQ(m_page.leadMinutesIndex(), -1);
    EXPECT_EQ(m_page.leadMinutesText(), QStringLiteral("7 minutes before"));
    m_page.setLeadMinutesIndex(-1);
    m_page.setPanelCornerIndex(4);
    EXPECT_EQ(m_prefs.leadMinutes(), 7);
    EXPECT_EQ(m_prefs.panelCorner(), PanelCorner::topRight);
    m_page.setPanelCornerIndex(2);
    EXPECT_EQ(m_prefs.panelCorner(), PanelCorner::bottomRight);
}

TEST_F(SettingsModelTest, writesTheShortcut)
{
    QSignalSpy announced(&m_prefs, &Preferences::joinHotKeyChanged);
    QSignalSpy written(&m_prefs, &Preferences::joinHotKeyWasSet);
    m_page.setUseHotKey(true);
    EXPECT_EQ(m_prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    m_page.recorder()->reset();
    EXPECT_EQ(announced.count(), 1);
    EXPECT_EQ(written.count(), 2) << "an equal combination is written, but not announced";
    Q_EMIT m_page.recorder()->comboChosen(working);
    EXPECT_EQ(m_prefs.joinHotKey(), working);
    m_page.setUseHotKey(false);
    EXPECT_TRUE(m_store.value(settingsKey::joinHotKey).isUndefined());
    m_page.setUseHotKey(true);
    EXPECT_EQ(m_prefs.joinHotKey(), working) << "the last one, not the default";
    m_store.changeFromOutside(
        [](DefaultsStore &store) { store.setValue(settingsKey::joinHotKey, QJsonValue::Undefined); });
    EXPECT_FALSE(m_page.useHotKey());
}

TEST_F(SettingsModelTest, tellsOfAShortcutThatIsInUseAndKeepsTheWorkingOne)
{
    m_isFree = false;
    m_page.setUseHotKey(true);
    EXPECT_TRUE(m_page.useHotKey()) << "so that another can be chosen";
    EXPECT_EQ(m_page.hotKeyConflict(), QStringLiteral("⇧⌘J is already in use. Choose a different shortcut."));
    EXPECT_TRUE(m_store.value(settingsKey::joinHotKey).isUndefined());
    m_page.begin();
    EXPECT_FALSE(m_page.useHotKey()) << "the page is built anew";

    m_isFree = true;
    Q_EMIT m_page.recorder()->comboChosen(working);
    EXPECT_EQ(m_page.hotKeyConflict(), QString());
    m_isFree = false;
    m_page.recorder()->reset();
    EXPECT_EQ(m_prefs.joinHotKey(), working);
    EXPECT_EQ(m_page.recorder()->combo(), working);
    EXPECT_NE(m_page.hotKeyConflict(), QString());
}

TEST_F(SettingsModelTest, listsCalendarsByAccountAndKeepsRowsThatStay)
{
    const struct
    {
        std::vector<CalendarInfo> calendars;
        std::vector<std::string> rows;
        int inserted = 0;
        int removed = 0;
    } steps[] = {
        {{calendar("b", "iCloud"), calendar("a", "aaa"), calendar("x"), calendar("a2", "iCloud")},
         {"-Calendars: The x-", "-aaa: The a-", "-iCloud: The b", "iCloud: The a2-"},
         4},
        {{calendar("b", "iCloud"), calendar("a", "aaa"), calendar("x"), calendar("z", "Zzz"),
          calendar("a2", "iCloud")},
         {"-Calendars: The x-", "-Zzz: The z-", "-aaa: The a-", "-iCloud: The b", "iCloud: The a2-"},
         1},
        {{calendar("a", "aaa"), calendar("x"), calendar("z", "Zzz")},
         {"-Calendars: The x-", "-Zzz: The z-", "-aaa: The a-"},
         0,
         2},
    };

    CalendarsPageModel model(m_prefs, m_source, {});
    const auto *list = model.calendars();
    int inserted = 0;
    int removed = 0;
    QObject::connect(list, &QAbstractItemModel::rowsInserted, list,
                     [&](const QModelIndex &, int first, int last) { inserted += last - first + 1; });
    QObject::connect(list, &QAbstractItemModel::rowsRemoved, list,
                     [&](const QModelIndex &, int first, int last) { removed += last - first + 1; });
    for (const auto &step : steps) {
        inserted = removed = 0;
        m_source.known = step.calendars;
        model.reload();
        EXPECT_EQ(rows(*list), step.rows);
        EXPECT_EQ(inserted, step.inserted);
        EXPECT_EQ(removed, step.removed);
    }
}

} // namespace mivora
