#include "Preferences/Preferences.h"
#include "Preferences/Settings.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"

#include <QJsonArray>
#include <QJsonDocument>
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

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

TEST(Preferences, defaultsStandForWhatIsMissingOrOfAnotherType)
{
    Fixture fixture;
    const Preferences &read = fixture.preferences;
    for (const char *stored : {"{}", R"({"showTitle": "perhaps", "titleWidth": 9.5, "leadMinutes": true,
             "panelCorner": 2, "remindWithoutLink": "true", "joinHotKey": 9, "disabledCalendarIDs": "a",
             "browserServices": 3, "hasCompletedOnboarding": 7})"}) {
        const QJsonObject values = QJsonDocument::fromJson(stored).object();
        fixture.store.changeFromOutside([&](DefaultsStore &other) {
            for (auto value = values.begin(); value != values.end(); ++value)
                other.setValue(value.key(), value.value());
        });
        EXPECT_TRUE(read.showTitle());
        EXPECT_EQ(read.titleWidth(), 24);
        EXPECT_EQ(read.leadMinutes(), 1);
        EXPECT_EQ(read.panelCorner(), PanelCorner::topRight);
        EXPECT_FALSE(read.remindWithoutLink());
        EXPECT_EQ(read.joinHotKey(), std::nullopt);
        EXPECT_THAT(read.disabledCalendarIDs(), IsEmpty());
        EXPECT_THAT(read.browserServices(), IsEmpty());
        EXPECT_FALSE(read.hasCompletedOnboarding());
    }
}

TEST(Preferences, whatIsOutOfRangeIsCorrectedAndNotRewritten)
{
    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    const auto stored = [&](const char *key, const QJsonValue &value) {
        store.setValue(text(key), value);
        const Preferences preferences(store, loginItem);
        EXPECT_EQ(store.value(text(key)), value);
        return std::tuple(preferences.titleWidth(), preferences.leadMinutes(), preferences.panelCorner());
    };
    for (const auto &[width, read] : {std::pair(-1ll, 8), {8, 8}, {60, 60}, {61, 60}, {0x1'0000'0009, 60}})
        EXPECT_EQ(std::get<0>(stored("titleWidth", width)), read) << width;
    for (const auto &[lead, read] : {std::pair(0ll, 0), {5, 5}, {3, 1}, {-1, 1}, {0x1'0000'0002, 1}})
        EXPECT_EQ(std::get<1>(stored("leadMinutes", lead)), read) << lead;
    for (const auto &[corner, read] : {std::pair("topLeft", PanelCorner::topLeft),
                                       {"bottomRight", PanelCorner::bottomRight},
                                       {"bottomLeft", PanelCorner::bottomLeft},
                                       {"BottomLeft", PanelCorner::topRight}})
        EXPECT_EQ(std::get<2>(stored("panelCorner", text(corner))), read) << corner;
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
        QSignalSpy wasSet(&fixture.preferences, &Preferences::joinHotKeyWasSet);
        fixture.preferences.setJoinHotKey(std::nullopt);
        EXPECT_EQ(wasSet.count(), 1) << "also without a change";
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
    EXPECT_TRUE(read.remindWithoutLink() && read.hasCompletedOnboarding());
    EXPECT_EQ(read.joinHotKey(), set.joinHotKey());
    EXPECT_EQ(read.disabledCalendarIDs(), set.disabledCalendarIDs());
    EXPECT_EQ(read.browserServices(), set.browserServices());
}

TEST(Preferences, aRealChangeIsAnnouncedOnceAndWrittenEveryTime)
{
    using P = Preferences;
    const std::pair<void (P::*)(), std::function<void(P &)>> rows[] = {
        {&P::showTitleChanged, [](P &p) { p.setShowTitle(false); }},
        {&P::titleWidthChanged, [](P &p) { p.setTitleWidth(30); }},
        {&P::leadMinutesChanged, [](P &p) { p.setLeadMinutes(5); }},
        {&P::panelCornerChanged, [](P &p) { p.setPanelCorner(PanelCorner::topLeft); }},
        {&P::remindWithoutLinkChanged, [](P &p) { p.setRemindWithoutLink(true); }},
        {&P::joinHotKeyChanged, [](P &p) { p.setJoinHotKey(HotKeyCombo()); }},
        {&P::disabledCalendarIDsChanged, [](P &p) { p.setDisabledCalendarIDs({"a"}); }},
        {&P::browserServicesChanged, [](P &p) { p.setBrowserServices({Service::zoom}); }},
        {&P::hasCompletedOnboardingChanged, [](P &p) { p.setHasCompletedOnboarding(true); }},
    };
    for (const auto &[signal, set] : rows) {
        Fixture fixture;
        QSignalSpy changed(&fixture.preferences, signal);
        set(fixture.preferences);
        const QStringList stored = fixture.store.values().keys();
        ASSERT_EQ(stored.size(), 1);
        fixture.store.setValue(stored.first(), QJsonValue::Undefined);
        set(fixture.preferences);
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
    preview.loginItem.enabled = true;
    EXPECT_FALSE(Preferences(preview.store, preview.loginItem).launchAtLogin());
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
