#include "KeloMenuBar/backends/MenuGenerations.h"

#include <climits>
#include <gmock/gmock.h>

using namespace kelo;

namespace {

Menu menuOf(const QString &title)
{
    Menu menu;
    menu.addItem(title, {}, [] {});
    return menu;
}

int firstId(const MenuGenerations &generations)
{
    return generations.layout(MenuGenerations::rootId, -1, {})->children.constFirst().id;
}

} // namespace

TEST(MenuProperties, leaveOutWhatIsTheDefault)
{
    using Shortcut = QList<QStringList>;

    struct Case
    {
        const char *name;
        MenuItem item;
        QVariantMap expected;
    };

    const QString label = QStringLiteral("label");
    const QString key = QStringLiteral("shortcut");
    const Case cases[] = {
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
        {"punctuation has a name",
         {.title = QStringLiteral("Settings…"), .keyEquivalent = QStringLiteral(",")},
         {{label, QStringLiteral("Settings…")},
          {key, QVariant::fromValue(Shortcut{{QStringLiteral("Control"), QStringLiteral("comma")}})}}},
    };
    for (const Case &test : cases)
        EXPECT_EQ(dbusMenuProperties(test.item), test.expected) << test.name;
}

TEST(MenuGenerations, forgetWhatWasReplacedLongAgo)
{
    MenuGenerations generations;
    generations.replace(menuOf(QStringLiteral("old")));
    const int id = firstId(generations);
    for (int count = 0; count < 10; ++count)
        generations.replace(menuOf(QStringLiteral("newer")));
    EXPECT_EQ(generations.revision(), 11U);
    EXPECT_FALSE(generations.contains(id));
    EXPECT_FALSE(generations.action(id));
}

TEST(MenuGenerations, aDisabledItemHasNoAction)
{
    Menu menu;
    menu.addItem(QStringLiteral("Lunch"), {}, [] {}).isEnabled = false;
    MenuGenerations generations;
    generations.replace(std::move(menu));
    EXPECT_TRUE(generations.contains(firstId(generations)));
    EXPECT_FALSE(generations.action(firstId(generations)));
}

TEST(MenuGenerations, answerForSomeItemsAndSomeProperties)
{
    Menu menu;
    menu.addItem(QStringLiteral("a"), QStringLiteral("q"), {});
    menu.addItem(QStringLiteral("b"), {}, {});
    MenuGenerations generations;
    generations.replace(std::move(menu));
    const int id = firstId(generations);
    const QStringList label{QStringLiteral("label")};

    EXPECT_EQ(generations.properties({}, {}).size(), 2);
    EXPECT_EQ(generations.properties({id + 1, 999}, {}).size(), 1);
    EXPECT_EQ(generations.properties({id}, label).constFirst().properties.keys(), label);
    EXPECT_TRUE(generations.layout(MenuGenerations::rootId, 0, {})->children.isEmpty());
    EXPECT_FALSE(generations.layout(999, -1, {}));
    for (const int number : {999, INT_MIN, INT_MAX})
        EXPECT_FALSE(generations.contains(number) || generations.action(number)) << number;
}
