#include "KeloMenuBar/backends/MenuGenerations.h"

#include <climits>
#include <gmock/gmock.h>

using namespace kelo;

TEST(MenuProperties, leaveOutWhatIsTheDefault)
{
    using Shortcut = QList<QStringList>;
    const QString label = QStringLiteral("label");
    const QString key = QStringLiteral("shortcut");

    const struct
    {
        const char *name;
        MenuItem item;
        QVariantMap expected;
    } rows[] = {
        {"plain", {.title = QStringLiteral("Open")}, {{label, QStringLiteral("Open")}}},
        {"underscores are not access keys",
         {.title = QStringLiteral("a_b__c")},
         {{label, QStringLiteral("a__b____c")}}},
        {"the time stays in front of a title in Arabic",
         {.title = QStringLiteral("09:05  اجتماع  · Zoom")},
         {{label, QStringLiteral("\u200E09:05  اجتماع  · Zoom")}}},
        {"disabled",
         {.title = QStringLiteral("Lunch"), .isEnabled = false},
         {{label, QStringLiteral("Lunch")}, {QStringLiteral("enabled"), false}}},
        {"separator", {.isSeparator = true}, {{QStringLiteral("type"), QStringLiteral("separator")}}},
        {"letter",
         {.title = QStringLiteral("Quit"), .keyEquivalent = QStringLiteral("q")},
         {{label, QStringLiteral("Quit")},
          {key, QVariant::fromValue(Shortcut{{QStringLiteral("Control"), QStringLiteral("q")}})}}},
        {"with Shift",
         {.title = QStringLiteral("Redo"),
          .keyEquivalent = QStringLiteral("z"),
          .modifiers = KeyModifiers::CommandShift},
         {{label, QStringLiteral("Redo")},
          {key, QVariant::fromValue(
                    Shortcut{{QStringLiteral("Control"), QStringLiteral("Shift"), QStringLiteral("z")}})}}},
        {"punctuation has a name",
         {.title = QStringLiteral("Settings…"), .keyEquivalent = QStringLiteral(",")},
         {{label, QStringLiteral("Settings…")},
          {key, QVariant::fromValue(Shortcut{{QStringLiteral("Control"), QStringLiteral("comma")}})}}},
    };

    for (const auto &row : rows)
        EXPECT_EQ(dbusMenuProperties(row.item), row.expected) << row.name;
}

TEST(MenuGenerations, keepThreeOpeningsWithNumbersOfTheirOwn)
{
    MenuGenerations generations;
    EXPECT_EQ(generations.revision(), 0U);
    int chosen = 0;
    for (int opening = 1; opening <= 4; ++opening) {
        Menu menu;
        menu.addItem(QStringLiteral("on"), {}, [&chosen, opening] { chosen = opening; });
        menu.addItem(QStringLiteral("off"), {}, [] {}).isEnabled = false;
        generations.replace(std::move(menu));
    }
    EXPECT_EQ(generations.revision(), 4U);
    const QList<DBusMenuLayout> items = generations.layout().children;
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0].id, 7);
    EXPECT_EQ(items[1].id, 8);
    EXPECT_EQ(items[1].properties, generations.properties(8));

    for (int opening = 2; opening <= 4; ++opening) {
        const int on = 2 * opening - 1;
        ASSERT_TRUE(generations.action(on)) << opening;
        generations.action(on)();
        EXPECT_EQ(chosen, opening);
        EXPECT_TRUE(generations.contains(on + 1) && !generations.action(on + 1)) << "what is off";
        EXPECT_EQ(generations.properties(on).has_value(), opening == 4) << "only the current one is told";
    }
    for (const int number : {-1, 1, 2, 9, INT_MIN, INT_MAX})
        EXPECT_FALSE(generations.contains(number) || generations.action(number)) << number;
    EXPECT_TRUE(generations.contains(MenuGenerations::rootId));
}
