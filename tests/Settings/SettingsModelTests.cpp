#include "Preferences/Settings.h"
#include "Settings/SettingsUnderTest.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace mivora {

namespace {

CalendarInfo calendar(const std::string &title, const std::string &account)
{
    return {title, title, account, account == "aaa" ? std::optional(Color{1, 2, 3}) : std::nullopt};
}

/// "ACCOUNT TITLE COLOUR" of each row, with a line where an account begins and where it ends.
std::string rows(const QAbstractItemModel &list)
{
    QStringList found;
    for (int i = 0; i < list.rowCount(); ++i) {
        const auto read = [&](int role) { return list.index(i, 0).data(role); };
        const auto line = [&](int role) { return read(role).toBool() ? QStringLiteral("-") : QString(); };
        found.append(line(CalendarListModel::IsFirstRole) + read(CalendarListModel::AccountRole).toString() +
                     u' ' + read(CalendarListModel::TitleRole).toString() +
                     read(CalendarListModel::ColorRole).toString() + line(CalendarListModel::IsLastRole));
    }
    return found.join(u'|').toStdString();
}

constexpr kelo::HotKeyCombo working{9, kelo::controlKey};

} // namespace

class SettingsModelTest : public testing::Test, public SettingsUnderTest
{
protected:
    GeneralPageModel page{prefs, service, [this](const auto &) { return isFree; }};
};

TEST_F(SettingsModelTest, saysWhatIsChosenAndTakesWhatThereIs)
{
    prefs.setLeadMinutes(7);
    EXPECT_EQ(page.leadMinutesIndex(), -1);
    page.setLeadMinutesIndex(-1);
    page.setPanelCornerIndex(4);
    EXPECT_EQ(prefs.leadMinutes(), 7);
    EXPECT_EQ(prefs.panelCorner(), PanelCorner::topRight);
    page.setLeadMinutesIndex(0);
    EXPECT_EQ(prefs.leadMinutes(), 0);
    page.setPanelCornerIndex(3);
    EXPECT_EQ(prefs.panelCorner(), PanelCorner::bottomLeft);
    EXPECT_EQ(settingsPageFromRawValue(QStringLiteral("calendars")), SettingsPage::calendars);
    EXPECT_EQ(settingsPageFromRawValue(QStringLiteral("Calendars")), std::nullopt);
}

TEST_F(SettingsModelTest, writesTheShortcut)
{
    QSignalSpy announced(&prefs, &Preferences::joinHotKeyChanged);
    QSignalSpy written(&prefs, &Preferences::joinHotKeyWasSet);
    page.setUseHotKey(true);
    EXPECT_EQ(prefs.joinHotKey(), GeneralPageModel::defaultCombo);
    page.recorder()->reset();
    EXPECT_EQ(announced.count(), 1);
    EXPECT_EQ(written.count(), 2) << "an equal combination is written, but not announced";
    Q_EMIT page.recorder()->comboChosen(working);
    EXPECT_EQ(prefs.joinHotKey(), working);
    page.setUseHotKey(false);
    EXPECT_EQ(prefs.joinHotKey(), std::nullopt);
    page.setUseHotKey(true);
    EXPECT_EQ(prefs.joinHotKey(), working) << "the last one, not the default";
    store.changeFromOutside(
        [](DefaultsStore &store) { store.setValue(settingsKey::joinHotKey, QJsonValue::Undefined); });
    EXPECT_FALSE(page.useHotKey());
}

TEST_F(SettingsModelTest, tellsOfAShortcutThatIsInUseAndKeepsTheWorkingOne)
{
    isFree = false;
    page.setUseHotKey(true);
    EXPECT_TRUE(page.useHotKey()) << "so that another can be chosen";
    EXPECT_EQ(page.hotKeyConflict(), QStringLiteral("⇧⌘J is already in use. Choose a different shortcut."));
    EXPECT_EQ(prefs.joinHotKey(), std::nullopt);
    page.begin();
    EXPECT_FALSE(page.useHotKey()) << "the page is built anew";

    isFree = true;
    Q_EMIT page.recorder()->comboChosen(working);
    EXPECT_EQ(page.hotKeyConflict(), QString());
    isFree = false;
    page.recorder()->reset();
    EXPECT_EQ(prefs.joinHotKey(), working);
    EXPECT_EQ(page.recorder()->combo(), working);
    EXPECT_NE(page.hotKeyConflict(), QString());
}

TEST_F(SettingsModelTest, listsCalendarsByAccountAndKeepsRowsThatStay)
{
    const struct
    {
        std::vector<CalendarInfo> calendars;
        const char *rows;
        const char *changes;
    } steps[] = {
        {{calendar("b", "iCloud"), calendar("a", "aaa"), calendar("x", ""), calendar("a2", "iCloud")},
         "-Calendars x-|-aaa a#010203-|-iCloud b|iCloud a2-",
         "+0-3"},
        {{calendar("b", "iCloud"), calendar("z", "Zzz"), calendar("a", "aaa"), calendar("x", "")},
         "-Calendars x-|-Zzz z-|-aaa a#010203-|-iCloud b-",
         "-1-3 +1-3"},
        {{calendar("a", "aaa"), calendar("x", ""), calendar("z", "Zzz")},
         "-Calendars x-|-Zzz z-|-aaa a#010203-",
         "-3-3"},
    };

    CalendarsPageModel model(prefs, source, {});
    const auto *list = model.calendars();
    QStringList changes;
    const auto recorder = [&](QChar sign) {
        return [&, sign](const QModelIndex &, int first, int last) {
            changes.append(sign + QString::number(first) + u'-' + QString::number(last));
        };
    };
    QObject::connect(list, &QAbstractItemModel::rowsInserted, list, recorder(u'+'));
    QObject::connect(list, &QAbstractItemModel::rowsRemoved, list, recorder(u'-'));
    for (const auto &step : steps) {
        changes.clear();
        source.known = step.calendars;
        model.reload();
        EXPECT_EQ(rows(*list), step.rows);
        EXPECT_EQ(changes.join(u' ').toStdString(), step.changes);
    }
}

} // namespace mivora
