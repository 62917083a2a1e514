#include "Platform/fake/FakeLoginItem.h"
#include "Platform/fake/MemoryDefaultsStore.h"
#include "Preferences/Preferences.h"

#include <QSignalSpy>
#include <gmock/gmock.h>

using namespace mivora;
using kelo::HotKeyCombo;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = MemoryDefaultsStore::Kind;

namespace {

struct Setting
{
    const char *name;
    void (Preferences::*changed)();
    std::function<void(Preferences &)> set;
    std::function<void(const DefaultsStore &)> expectStored;
};

void PrintTo(const Setting &setting, std::ostream *out)
{
    *out << setting.name;
}

class PreferencesSetting : public testing::TestWithParam<Setting>
{
};

QString key(const char *name)
{
    return QString::fromLatin1(name);
}

auto storesFlag(const char *name, bool expected)
{
    return [=](const DefaultsStore &store) { EXPECT_EQ(store.boolean(key(name)), expected); };
}

auto storesInteger(const char *name, qint64 expected)
{
    return [=](const DefaultsStore &store) { EXPECT_EQ(store.integer(key(name)), expected); };
}

auto storesList(const char *name, const QStringList &expected)
{
    return [=](const DefaultsStore &store) { EXPECT_EQ(store.stringList(key(name)), expected); };
}

void expectStoredCorner(const DefaultsStore &store)
{
    EXPECT_EQ(store.string(key("panelCorner")), key("bottomLeft"));
}

void expectStoredShortcut(const DefaultsStore &store)
{
    EXPECT_EQ(store.data(key("joinHotKey")), QByteArray(R"({"keyCode":38,"modifiers":4352})"));
}

struct Fixture
{
    explicit Fixture(Kind kind = Kind::preview) : store(kind) {}

    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences preferences{store, loginItem};
};

} // namespace

TEST_P(PreferencesSetting, announcesARealChangeOnceAndWritesEveryTime)
{
    Fixture fixture;
    QSignalSpy changed(&fixture.preferences, GetParam().changed);
    GetParam().set(fixture.preferences);
    GetParam().expectStored(fixture.store);
    EXPECT_EQ(changed.count(), 1);

    const QStringList stored = fixture.store.keys();
    ASSERT_EQ(stored.size(), 1);
    fixture.store.remove(stored.first());
    GetParam().set(fixture.preferences);
    GetParam().expectStored(fixture.store);
    EXPECT_EQ(changed.count(), 1);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Properties, PreferencesSetting, testing::Values(
    Setting{"showTitle", &Preferences::showTitleChanged,
            [](Preferences &p) { p.setShowTitle(false); }, storesFlag("showTitle", false)},
    Setting{"titleWidth beyond its range", &Preferences::titleWidthChanged,
            [](Preferences &p) { p.setTitleWidth(100); }, storesInteger("titleWidth", 100)},
    Setting{"leadMinutes that is no choice", &Preferences::leadMinutesChanged,
            [](Preferences &p) { p.setLeadMinutes(3); }, storesInteger("leadMinutes", 3)},
    Setting{"panelCorner", &Preferences::panelCornerChanged,
            [](Preferences &p) { p.setPanelCorner(PanelCorner::bottomLeft); }, expectStoredCorner},
    Setting{"remindWithoutLink", &Preferences::remindWithoutLinkChanged,
            [](Preferences &p) { p.setRemindWithoutLink(true); }, storesFlag("remindWithoutLink", true)},
    Setting{"joinHotKey", &Preferences::joinHotKeyChanged,
            [](Preferences &p) { p.setJoinHotKey(HotKeyCombo{38, 0x1100}); }, expectStoredShortcut},
    Setting{"disabledCalendarIDs", &Preferences::disabledCalendarIDsChanged,
            [](Preferences &p) { p.setDisabledCalendarIDs({"b", "é", "a", "B"}); },
            storesList("disabledCalendarIDs", {key("B"), key("a"), key("b"), QStringLiteral("é")})},
    Setting{"browserServices", &Preferences::browserServicesChanged,
            [](Preferences &p) { p.setBrowserServices({Service::zoom, Service::teams, Service::meet}); },
            storesList("browserServices", {key("meet"), key("teams"), key("zoom")})},
    Setting{"hasCompletedOnboarding", &Preferences::hasCompletedOnboardingChanged,
            [](Preferences &p) { p.setHasCompletedOnboarding(true); },
            storesFlag("hasCompletedOnboarding", true)}));

// clang-format on

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

TEST(Preferences, shortcutThatCannotBeReadStaysStoredUntilItIsSet)
{
    MemoryDefaultsStore store;
    store.setData(key("joinHotKey"), "broken");
    FakeLoginItem loginItem;
    Preferences preferences(store, loginItem);
    preferences.setShowTitle(false);
    EXPECT_EQ(store.data(key("joinHotKey")), QByteArray("broken"));
    preferences.setJoinHotKey(std::nullopt);
    EXPECT_FALSE(store.keys().contains(key("joinHotKey")));
}

TEST(Preferences, observerThatSetsAgainHasTheLastWord)
{
    Fixture fixture;
    QObject::connect(&fixture.preferences, &Preferences::titleWidthChanged,
                     [&] { fixture.preferences.setTitleWidth(30); });
    fixture.preferences.setTitleWidth(40);
    EXPECT_EQ(fixture.preferences.titleWidth(), 30);
    EXPECT_EQ(fixture.store.integer(key("titleWidth")), 30);
}

TEST(Preferences, loginItemFollowsRealChangesOfTheStandardStore)
{
    Fixture fixture(Kind::standard);
    QSignalSpy changed(&fixture.preferences, &Preferences::launchAtLoginChanged);
    for (const bool wanted : {false, true, true, false})
        fixture.preferences.setLaunchAtLogin(wanted);
    EXPECT_THAT(fixture.loginItem.requests, ElementsAre(true, false));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(fixture.store.keys(), QStringList());
}

TEST(Preferences, previewNeverTouchesTheLoginItem)
{
    Fixture fixture(Kind::preview);
    fixture.preferences.setLaunchAtLogin(true);
    EXPECT_TRUE(fixture.preferences.launchAtLogin());
    EXPECT_THAT(fixture.loginItem.requests, IsEmpty());
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
