#include "Preferences/Preferences.h"
#include "Preferences/Settings.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"

#include <QJsonArray>
#include <QSignalSpy>
#include <gmock/gmock.h>

using namespace mivora;
using kelo::HotKeyCombo;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = MemoryDefaultsStore::Kind;

namespace {

struct Fixture
{
    explicit Fixture(Kind kind = Kind::preview) : store(kind) {}

    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences preferences{store, loginItem};
};

void expectDefaults(const Preferences &preferences)
{
    EXPECT_TRUE(preferences.showTitle());
    EXPECT_EQ(preferences.titleWidth(), 24);
    EXPECT_EQ(preferences.leadMinutes(), 1);
    EXPECT_EQ(preferences.panelCorner(), PanelCorner::topRight);
    EXPECT_FALSE(preferences.remindWithoutLink());
    EXPECT_EQ(preferences.joinHotKey(), std::nullopt);
    EXPECT_THAT(preferences.disabledCalendarIDs(), IsEmpty());
    EXPECT_THAT(preferences.browserServices(), IsEmpty());
    EXPECT_FALSE(preferences.hasCompletedOnboarding());
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

TEST(Preferences, defaultsStandForWhatIsMissingOrOfAnotherType)
{
    Fixture fixture;
    expectDefaults(fixture.preferences);
    fixture.store.changeFromOutside([](DefaultsStore &other) {
        other.setValue(text("showTitle"), text("perhaps"));
        other.setValue(text("titleWidth"), 9.5);
        other.setValue(text("leadMinutes"), true);
        other.setValue(text("panelCorner"), 2);
        other.setValue(text("remindWithoutLink"), text("true"));
        other.setValue(text("joinHotKey"), text("V"));
        other.setValue(text("disabledCalendarIDs"), false);
        other.setValue(text("browserServices"), 3);
        other.setValue(text("hasCompletedOnboarding"), 7);
    });
    expectDefaults(fixture.preferences);
}

TEST(Preferences, whatIsOutOfRangeIsCorrectedAndNotRewritten)
{
    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    const std::pair<qint64, int> widths[] = {{-1, 8}, {60, 60}, {61, 60}, {0x1'0000'0009, 60}};
    for (const auto &[stored, read] : widths) {
        store.setValue(text("titleWidth"), stored);
        EXPECT_EQ(Preferences(store, loginItem).titleWidth(), read) << stored;
        EXPECT_EQ(store.value(text("titleWidth")), stored);
    }
    const std::pair<qint64, int> leads[] = {{0, 0}, {5, 5}, {3, 1}, {-1, 1}, {0x1'0000'0002, 1}};
    for (const auto &[stored, read] : leads) {
        store.setValue(text("leadMinutes"), stored);
        EXPECT_EQ(Preferences(store, loginItem).leadMinutes(), read) << stored;
        EXPECT_EQ(store.value(text("leadMinutes")), stored);
    }
    const std::pair<const char *, PanelCorner> corners[] = {{"topLeft", PanelCorner::topLeft},
                                                            {"bottomRight", PanelCorner::bottomRight},
                                                            {"bottomLeft", PanelCorner::bottomLeft},
                                                            {"BottomLeft", PanelCorner::topRight}};
    for (const auto &[stored, read] : corners) {
        store.setValue(text("panelCorner"), text(stored));
        EXPECT_EQ(Preferences(store, loginItem).panelCorner(), read) << stored;
    }
    store.setValue(text("browserServices"), QJsonArray{text("zoom"), text("Zoom"), text("skype")});
    EXPECT_THAT(Preferences(store, loginItem).browserServices(), ElementsAre(Service::zoom));
}

TEST(Preferences, shortcutThatCannotBeReadStaysStoredUntilItIsSet)
{
    for (const char *broken : {"broken", R"({"keyCode":38,"modif)", R"({"keyCode":65536,"modifiers":1})"}) {
        Fixture fixture;
        fixture.store.changeFromOutside(
            [&](DefaultsStore &other) { other.setValue(text("joinHotKey"), text(broken)); });
        EXPECT_EQ(fixture.preferences.joinHotKey(), std::nullopt) << broken;
        fixture.preferences.setShowTitle(false);
        EXPECT_EQ(fixture.store.value(text("joinHotKey")), text(broken));
        fixture.preferences.setJoinHotKey(std::nullopt);
        EXPECT_EQ(fixture.store.values().keys(), QStringList(text("showTitle")));
    }
}

TEST(Preferences, everySettingIsStoredInItsFormAndReadAgain)
{
    Fixture fixture;
    Preferences &set = fixture.preferences;
    set.setShowTitle(false);
    set.setTitleWidth(100);
    set.setLeadMinutes(3);
    set.setPanelCorner(PanelCorner::bottomLeft);
    set.setRemindWithoutLink(true);
    set.setJoinHotKey(HotKeyCombo{38, 0x1100});
    set.setDisabledCalendarIDs({"b", "é", "a", "B"});
    set.setBrowserServices({Service::zoom, Service::teams, Service::meet});
    set.setHasCompletedOnboarding(true);

    const QJsonObject expected{
        {text("showTitle"), false},
        {text("titleWidth"), 100},
        {text("leadMinutes"), 3},
        {text("panelCorner"), text("bottomLeft")},
        {text("remindWithoutLink"), true},
        {text("joinHotKey"), text(R"({"keyCode":38,"modifiers":4352})")},
        {text("disabledCalendarIDs"), QJsonArray{text("B"), text("a"), text("b"), text("é")}},
        {text("browserServices"), QJsonArray{text("meet"), text("teams"), text("zoom")}},
        {text("hasCompletedOnboarding"), true}};
    EXPECT_EQ(fixture.store.values(), expected);

    const Preferences read(fixture.store, fixture.loginItem);
    EXPECT_FALSE(read.showTitle());
    EXPECT_TRUE(read.remindWithoutLink());
    EXPECT_EQ(read.joinHotKey(), set.joinHotKey());
    EXPECT_EQ(read.disabledCalendarIDs(), set.disabledCalendarIDs());
    EXPECT_EQ(read.browserServices(), set.browserServices());
    EXPECT_TRUE(read.hasCompletedOnboarding());
}

TEST(Preferences, aRealChangeIsAnnouncedOnceAndWrittenEveryTime)
{
    const struct
    {
        void (Preferences::*changed)();
        std::function<void(Preferences &)> set;
    } rows[] = {
        {&Preferences::showTitleChanged, [](Preferences &p) { p.setShowTitle(false); }},
        {&Preferences::titleWidthChanged, [](Preferences &p) { p.setTitleWidth(30); }},
        {&Preferences::leadMinutesChanged, [](Preferences &p) { p.setLeadMinutes(5); }},
        {&Preferences::panelCornerChanged, [](Preferences &p) { p.setPanelCorner(PanelCorner::topLeft); }},
        {&Preferences::remindWithoutLinkChanged, [](Preferences &p) { p.setRemindWithoutLink(true); }},
        {&Preferences::joinHotKeyChanged, [](Preferences &p) { p.setJoinHotKey(HotKeyCombo()); }},
        {&Preferences::disabledCalendarIDsChanged, [](Preferences &p) { p.setDisabledCalendarIDs({"a"}); }},
        {&Preferences::browserServicesChanged, [](Preferences &p) { p.setBrowserServices({Service::zoom}); }},
        {&Preferences::hasCompletedOnboardingChanged,
         [](Preferences &p) { p.setHasCompletedOnboarding(true); }},
    };

    for (const auto &row : rows) {
        Fixture fixture;
        QSignalSpy changed(&fixture.preferences, row.changed);
        row.set(fixture.preferences);
        const QStringList stored = fixture.store.values().keys();
        ASSERT_EQ(stored.size(), 1);
        fixture.store.setValue(stored.first(), QJsonValue::Undefined);
        row.set(fixture.preferences);
        EXPECT_EQ(fixture.store.values().keys(), stored);
        EXPECT_EQ(changed.count(), 1) << stored.first().toStdString();
    }
}

TEST(Preferences, changesOfAnotherProcessAreReadInWholeThenAnnounced)
{
    Fixture fixture;
    Preferences &preferences = fixture.preferences;
    QSignalSpy corner(&preferences, &Preferences::panelCornerChanged);
    QSignalSpy lead(&preferences, &Preferences::leadMinutesChanged);
    QSignalSpy hotKeySet(&preferences, &Preferences::joinHotKeyWasSet);
    std::optional<HotKeyCombo> seenWithTheWidth;
    QObject::connect(&preferences, &Preferences::titleWidthChanged,
                     [&] { seenWithTheWidth = preferences.joinHotKey(); });

    fixture.store.changeFromOutside([](DefaultsStore &other) {
        other.setValue(text("titleWidth"), 500);
        other.setValue(text("leadMinutes"), 4);
        other.setValue(text("joinHotKey"), QString::fromUtf8(HotKeyCombo{1, 2}.toJson()));
    });
    EXPECT_EQ(preferences.titleWidth(), 60);
    EXPECT_EQ(seenWithTheWidth, (HotKeyCombo{1, 2}));
    EXPECT_EQ(hotKeySet.count(), 1);
    EXPECT_EQ(corner.count() + lead.count(), 0);

    fixture.store.changeFromOutside(
        [](DefaultsStore &other) { other.setValue(text("joinHotKey"), QJsonValue::Undefined); });
    EXPECT_EQ(preferences.joinHotKey(), std::nullopt);
    EXPECT_EQ(hotKeySet.count(), 2);

    // What was set out of range stays when something else changes.
    preferences.setTitleWidth(100);
    preferences.setLeadMinutes(3);
    fixture.store.changeFromOutside(
        [](DefaultsStore &other) { other.setValue(text("panelCorner"), QJsonValue::Undefined); });
    EXPECT_EQ(preferences.titleWidth(), 100);
    EXPECT_EQ(preferences.leadMinutes(), 3);
    EXPECT_EQ(hotKeySet.count(), 2);
}

TEST(Preferences, clearingTheShortcutRemovesItsKeyAndIsPostedEachTime)
{
    Fixture fixture;
    QSignalSpy wasSet(&fixture.preferences, &Preferences::joinHotKeyWasSet);
    fixture.preferences.setJoinHotKey(HotKeyCombo{});
    fixture.preferences.setJoinHotKey(std::nullopt);
    fixture.preferences.setJoinHotKey(std::nullopt);
    EXPECT_EQ(fixture.store.values().keys(), QStringList());
    EXPECT_EQ(wasSet.count(), 3);
}

TEST(Preferences, observerThatSetsAgainHasTheLastWord)
{
    Fixture fixture;
    QObject::connect(&fixture.preferences, &Preferences::titleWidthChanged,
                     [&] { fixture.preferences.setTitleWidth(30); });
    fixture.preferences.setTitleWidth(40);
    EXPECT_EQ(fixture.preferences.titleWidth(), 30);
    EXPECT_EQ(fixture.store.value(text("titleWidth")), 30);
}

TEST(Preferences, loginItemFollowsRealChangesOfTheStandardStoreAlone)
{
    Fixture standard(Kind::standard);
    QSignalSpy changed(&standard.preferences, &Preferences::launchAtLoginChanged);
    for (const bool wanted : {false, true, true, false})
        standard.preferences.setLaunchAtLogin(wanted);
    EXPECT_THAT(standard.loginItem.requests, ElementsAre(true, false));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(standard.store.values().keys(), QStringList());
    standard.loginItem.enabled = true;
    EXPECT_TRUE(Preferences(standard.store, standard.loginItem).launchAtLogin());

    Fixture preview(Kind::preview);
    preview.preferences.setLaunchAtLogin(true);
    EXPECT_THAT(preview.loginItem.requests, IsEmpty());
    EXPECT_EQ(preview.loginItem.asked, 0);
}

TEST(Preferences, failedLoginItemChangeIsLoggedInOneLineAndKept)
{
    Fixture fixture(Kind::standard);
    fixture.loginItem.error = QStringLiteral("the folder is\nread-only");
    testing::internal::CaptureStderr();
    fixture.preferences.setLaunchAtLogin(true);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Mivora: launch at login change failed: the folder is read-only\n");
    EXPECT_TRUE(fixture.preferences.launchAtLogin());
}
