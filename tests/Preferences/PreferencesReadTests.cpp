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

struct Reading
{
    const char *name;
    std::function<void(DefaultsStore &)> stored;
    std::function<void(const Preferences &)> expect;
};

void PrintTo(const Reading &reading, std::ostream *out)
{
    *out << reading.name;
}

class PreferencesReading : public testing::TestWithParam<Reading>
{
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
    EXPECT_FALSE(preferences.launchAtLogin());
}

auto width(qint64 stored)
{
    return [stored](DefaultsStore &store) { store.setInteger(QStringLiteral("titleWidth"), stored); };
}

auto isWidth(int expected)
{
    return [expected](const Preferences &preferences) { EXPECT_EQ(preferences.titleWidth(), expected); };
}

auto lead(qint64 stored)
{
    return [stored](DefaultsStore &store) { store.setInteger(QStringLiteral("leadMinutes"), stored); };
}

auto isLead(int expected)
{
    return [expected](const Preferences &preferences) { EXPECT_EQ(preferences.leadMinutes(), expected); };
}

auto corner(const char *stored)
{
    return [stored](DefaultsStore &store) {
        store.setString(QStringLiteral("panelCorner"), QString::fromLatin1(stored));
    };
}

auto isCorner(PanelCorner expected)
{
    return [expected](const Preferences &preferences) { EXPECT_EQ(preferences.panelCorner(), expected); };
}

auto hotKey(const char *stored)
{
    return [stored](DefaultsStore &store) { store.setData(QStringLiteral("joinHotKey"), stored); };
}

auto isHotKey(std::optional<HotKeyCombo> expected)
{
    return [expected](const Preferences &preferences) { EXPECT_EQ(preferences.joinHotKey(), expected); };
}

void storeOtherTypesEverywhere(DefaultsStore &store)
{
    store.setString(QStringLiteral("showTitle"), QStringLiteral("perhaps"));
    store.setStringList(QStringLiteral("titleWidth"), {QStringLiteral("9"), QStringLiteral("10")});
    store.setBoolean(QStringLiteral("leadMinutes"), true);
    store.setInteger(QStringLiteral("panelCorner"), 2);
    store.setData(QStringLiteral("remindWithoutLink"), "true");
    store.setString(QStringLiteral("joinHotKey"), QStringLiteral("V"));
    store.setBoolean(QStringLiteral("disabledCalendarIDs"), false);
    store.setInteger(QStringLiteral("browserServices"), 3);
    store.setInteger(QStringLiteral("hasCompletedOnboarding"), 7);
}

void storeOtherThanDefaults(DefaultsStore &store)
{
    store.setBoolean(QStringLiteral("showTitle"), false);
    store.setBoolean(QStringLiteral("remindWithoutLink"), true);
    store.setStringList(QStringLiteral("disabledCalendarIDs"),
                        {QStringLiteral("work"), QStringLiteral("été"), QStringLiteral("work")});
    store.setStringList(QStringLiteral("browserServices"),
                        {QStringLiteral("zoom"), QStringLiteral("Zoom"), QStringLiteral("skype")});
    store.setBoolean(QStringLiteral("hasCompletedOnboarding"), true);
}

void expectOtherThanDefaults(const Preferences &preferences)
{
    EXPECT_FALSE(preferences.showTitle());
    EXPECT_TRUE(preferences.remindWithoutLink());
    EXPECT_THAT(preferences.disabledCalendarIDs(), ElementsAre("work", "été"));
    EXPECT_THAT(preferences.browserServices(), ElementsAre(Service::zoom));
    EXPECT_TRUE(preferences.hasCompletedOnboarding());
}

} // namespace

TEST_P(PreferencesReading, correctsWhatIsOutOfRangeWithoutRewritingIt)
{
    MemoryDefaultsStore store;
    GetParam().stored(store);
    const QStringList before = store.keys();
    FakeLoginItem loginItem;
    GetParam().expect(Preferences(store, loginItem));
    EXPECT_EQ(store.keys(), before);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Stored, PreferencesReading, testing::Values(
    Reading{"nothing", [](DefaultsStore &) {}, expectDefaults},
    Reading{"values of other types", storeOtherTypesEverywhere, expectDefaults},
    Reading{"other than defaults", storeOtherThanDefaults, expectOtherThanDefaults},
    Reading{"width below the range", width(3), isWidth(8)},
    Reading{"least width", width(8), isWidth(8)},
    Reading{"greatest width", width(60), isWidth(60)},
    Reading{"width above the range", width(100), isWidth(60)},
    Reading{"negative width", width(-1), isWidth(8)},
    Reading{"width beyond 32 bits", width(0x1'0000'0009), isWidth(60)},
    Reading{"lead at the start", lead(0), isLead(0)},
    Reading{"longest lead", lead(5), isLead(5)},
    Reading{"lead between choices", lead(3), isLead(1)},
    Reading{"negative lead", lead(-1), isLead(1)},
    Reading{"lead beyond 32 bits", lead(0x1'0000'0002), isLead(1)},
    Reading{"top left", corner("topLeft"), isCorner(PanelCorner::topLeft)},
    Reading{"bottom right", corner("bottomRight"), isCorner(PanelCorner::bottomRight)},
    Reading{"bottom left", corner("bottomLeft"), isCorner(PanelCorner::bottomLeft)},
    Reading{"unknown corner", corner("BottomLeft"), isCorner(PanelCorner::topRight)},
    Reading{"shortcut", hotKey(R"({"keyCode":38,"modifiers":4352})"), isHotKey(HotKeyCombo{38, 0x1100})},
    Reading{"shortcut cut off", hotKey(R"({"keyCode":38,"modif)"), isHotKey(std::nullopt)},
    Reading{"shortcut without modifiers", hotKey(R"({"keyCode":38})"), isHotKey(std::nullopt)}));

// clang-format on

TEST(Preferences, LoginItemIsReadForTheStandardStoreOnly)
{
    FakeLoginItem loginItem;
    loginItem.enabled = true;
    MemoryDefaultsStore preview(Kind::preview);
    EXPECT_FALSE(Preferences(preview, loginItem).launchAtLogin());
    EXPECT_EQ(loginItem.asked, 0);
    MemoryDefaultsStore standard(Kind::standard);
    EXPECT_TRUE(Preferences(standard, loginItem).launchAtLogin());
}

TEST(Preferences, changesOfAnotherProcessAreReadInWholeThenAnnounced)
{
    MemoryDefaultsStore store;
    FakeLoginItem loginItem;
    Preferences preferences(store, loginItem);
    QSignalSpy corner(&preferences, &Preferences::panelCornerChanged);
    QSignalSpy lead(&preferences, &Preferences::leadMinutesChanged);
    QSignalSpy hotKeySet(&preferences, &Preferences::joinHotKeyWasSet);
    std::optional<HotKeyCombo> seenWithTheWidth;
    QObject::connect(&preferences, &Preferences::titleWidthChanged,
                     [&] { seenWithTheWidth = preferences.joinHotKey(); });

    store.changeFromOutside([](DefaultsStore &other) {
        other.setInteger(QStringLiteral("titleWidth"), 500);
        other.setInteger(QStringLiteral("leadMinutes"), 4);
        other.setData(QStringLiteral("joinHotKey"), HotKeyCombo{1, 2}.toJson());
    });
    EXPECT_EQ(preferences.titleWidth(), 60);
    EXPECT_EQ(seenWithTheWidth, (HotKeyCombo{1, 2}));
    EXPECT_EQ(hotKeySet.count(), 1);
    EXPECT_EQ(corner.count() + lead.count(), 0);

    store.changeFromOutside([](DefaultsStore &other) { other.remove(QStringLiteral("joinHotKey")); });
    EXPECT_EQ(preferences.joinHotKey(), std::nullopt);
    EXPECT_EQ(hotKeySet.count(), 2);

    store.changeFromOutside([](DefaultsStore &) {});
    EXPECT_EQ(hotKeySet.count(), 2);
}
