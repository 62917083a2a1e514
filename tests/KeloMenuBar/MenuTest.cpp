#include "KeloMenuBar/Menu.h"
#include "KeloMenuBar/MainMenu.h"

#include <QStringList>
#include <gmock/gmock.h>

using namespace kelo;
using testing::ElementsAre;

namespace {

// "Redo ⇧z": one line per item, to compare menus whole.
std::vector<std::string> lines(const MainMenu::Section &section)
{
    std::vector<std::string> result;
    for (const MainMenuItem &item : section.items) {
        const QString shift =
            item.modifiers == KeyModifiers::CommandShift ? QStringLiteral("shift+") : QString();
        const QString line = item.title + u' ' + shift + item.keyEquivalent;
        result.push_back(item.isSeparator ? "-" : line.toStdString());
    }
    return result;
}

} // namespace

TEST(Menu, anAddedItemCanStillBeChangedAfterOthersWereAdded)
{
    Menu menu;
    int chosen = 0;
    ClosureMenuItem &first = menu.addItem(QStringLiteral("Quit"), QStringLiteral("q"), [&] { ++chosen; });
    for (int count = 0; count < 100; ++count)
        menu.addItem(QStringLiteral("More"), {}, {});
    first.isEnabled = false;
    menu.items().front().action();

    EXPECT_FALSE(menu.items().front().isEnabled);
    EXPECT_EQ(menu.items().front().keyEquivalent, QStringLiteral("q"));
    EXPECT_TRUE(menu.items().back().keyEquivalent.isEmpty());
    EXPECT_EQ(chosen, 1);
}

TEST(MainMenu, hasTheStandardMenusInTheirOrder)
{
    const MainMenu menu = MainMenu::build(QStringLiteral("Mivora"));
    ASSERT_EQ(menu.sections.size(), 3U);
    EXPECT_THAT(lines(menu.sections[0]), ElementsAre("Quit Mivora q"));
    EXPECT_EQ(menu.sections[1].title, QStringLiteral("Edit"));
    EXPECT_THAT(lines(menu.sections[1]),
                ElementsAre("Undo z", "Redo shift+z", "-", "Cut x", "Copy c", "Paste v", "Select All a"));
    EXPECT_EQ(menu.sections[2].title, QStringLiteral("Window"));
    EXPECT_THAT(lines(menu.sections[2]), ElementsAre("Close w"));
    EXPECT_EQ(menu.sections[2].items[0].action, StandardAction::PerformClose);
}
