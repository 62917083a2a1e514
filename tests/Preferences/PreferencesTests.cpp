#include "Preferences/Preferences.h"
#include "Preferences/Settings.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"

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
        other.setString(text("showTitle"), text("perhaps"));
        other.setStringList(text("titleWidth"), {text("9"), text("10")});
        other.setBoolean(text("leadMinutes"), true);
        other.setInteger(text("panelCorner"), 2);
        other.setData(text("remindWithoutLink"), "true");
        other.setString(text("joinHotKey"), text("V"));
        other.setBoolean(text("disabledCalendarIDs"), false);
        other.setInteger(text("browserServices"), 3);
        other.setInteger(text("hasCompletedOnboarding"), 7);
    });
    expectDefaults(fixture.preferences);
}

TEST(Preferences, whatIsOutOfRangeIsCorrectedAndNotRewritten)
{
    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    const std::pair<qint64, int> widths[] = {{-1, 8}, {60, 60}, {61, 60}, {0x1'0000'0009, 60}};
    for (const auto &[stored, read] : widths) {
        store.setInteger(text("titleWidth"), stored);
        EXPECT_EQ(Preferences(store, loginItem).titleWidth(), read) << stored;
        EXPECT_EQ(store.integer(text("titleWidth")), stored);
    }
    const std::pair<qint64, int> leads[] = {{0, 0}, {5, 5}, {3, 1}, {-1, 1}, {0x1'0000'0002, 1}};
    for (const auto &[stored, read] : leads) {
        store.setInteger(text("leadMinutes"), stored);
        EXPECT_EQ(Preferences(store, loginItem).leadMinutes(), read) << stored;
        EXPECT_EQ(store.integer(text("leadMinutes")), stored);
    }
    const std::pair<const char *, PanelCorner> corners[] = {{"topLeft", PanelCorner::topLeft},
                                                            {"bottomRight", PanelCorner::bottomRight},
                                                            {"bottomLeft", PanelCorner::bottomLeft},
                                                            {"BottomLeft", PanelCorner::topRight}};
    for (const auto &[stored, read] : corners) {
        store.setString(text("panelCorner"), text(stored));
        EXPECT_EQ(Preferences(store, loginItem).panelCorner(), read) << stored;
    }
    store.setStringList(text("browserServices"), {text("zoom"), text("Zoom"), text("skype")});
    EXPECT_THAT(Preferences(store, loginItem).browserServices(), ElementsAre(Service::zoom));
}

TEST(Preferences, shortcutThatCannotBeReadStaysStoredUntilItIsSet)
{
    for (const char *broken : {"broken", R"({"keyCode":38,"modif)", R"({"keyCode":38})"}) {
        Fixture fixture;
        fixture.store.changeFromOutside(
            [&](DefaultsStore &other) { other.setData(text("joinHotKey"), broken); });
        EXPECT_EQ(fixture.preferences.joinHotKey(), std::nullopt) << broken;
        fixture.preferences.setShowTitle(false);
        EXPECT_EQ(fixture.store.data(text("joinHotKey")), QByteArray(broken));
        fixture.preferences.setJoinHotKey(std::nullopt);
        EXPECT_EQ(fixture.store.keys(), QStringList(text("showTitle")));
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

    const MemoryDefaultsStore &store = fixture.store;
    EXPECT_EQ(store.boolean(text("showTitle")), false);
    EXPECT_EQ(store.integer(text("titleWidth")), 100);
    EXPECT_EQ(store.integer(text("leadMinutes")), 3);
    EXPECT_EQ(store.string(text("panelCorner")), text("bottomLeft"));
    EXPECT_EQ(store.boolean(text("remindWithoutLink")), true);
    EXPECT_EQ(store.data(text("joinHotKey")), QByteArray(R"({"keyCode":38,"modifiers":4352})"));
    EXPECT_EQ(store.stringList(text("disabledCalendarIDs")),
              QStringList({text("B"), text("a"), text("b"), text("é")}));
    EXPECT_EQ(store.stringList(text("browserServices")),
              QStringList({text("meet"), text("teams"), text("zoom")}));
    EXPECT_EQ(store.boolean(text("hasCompletedOnboarding")), true);

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
        const QStringList stored = fixture.store.keys();
        ASSERT_EQ(stored.size(), 1);
        fixture.store.remove(stored.first());
        row.set(fixture.preferences);
        EXPECT_EQ(fixture.store.keys(), stored);
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
        other.setInteger(text("titleWidth"), 500);
        other.setInteger(text("leadMinutes"), 4);
        other.setData(text("joinHotKey"), HotKeyCombo{1, 2}.toJson());
    });
    EXPECT_EQ(preferences.titleWidth(), 60);
    EXPECT_EQ(seenWithTheWidth, (HotKeyCombo{1, 2}));
    EXPECT_EQ(hotKeySet.count(), 1);
    EXPECT_EQ(corner.count() + lead.count(), 0);

    fixture.store.changeFromOutside([](DefaultsStore &other) { other.remove(text("joinHotKey")); });
    EXPECT_EQ(preferences.joinHotKey(), std::nullopt);
    EXPECT_EQ(hotKeySet.count(), 2);

    // What was set out of range stays when something else changes.
    preferences.setTitleWidth(100);
    preferences.setLeadMinutes(3);
    fixture.store.changeFromOutside([](DefaultsStore &other) { other.remove(text("panelCorner")); });
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
    EXPECT_EQ(fixture.store.keys(), QStringList());
    EXPECT_EQ(wasSet.count(), 3);
}

TEST(Preferences, observerThatSetsAgainHasTheLastWord)
{
    Fixture fixture;
    QObject::connect(&fixture.preferences, &Preferences::titleWidthChanged,
                     [&] { fixture.preferences.setTitleWidth(30); });
    fixture.preferences.setTitleWidth(40);
    EXPECT_EQ(fixture.preferences.titleWidth(), 30);
    EXPECT_EQ(fixture.store.integer(text("titleWidth")), 30);
}

TEST(Preferences, loginItemFollowsRealChangesOfTheStandardStoreAlone)
{
    Fixture standard(Kind::standard);
    QSignalSpy changed(&standard.preferences, &Preferences::launchAtLoginChanged);
    for (const bool wanted : {false, true, true, false})
        standard.preferences.setLaunchAtLogin(wanted);
    EXPECT_THAT(standard.loginItem.requests, ElementsAre(true, false));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(standard.store.keys(), QStringList());
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
