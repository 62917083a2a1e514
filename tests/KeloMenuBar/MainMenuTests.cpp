#include "KeloMenuBar/MainMenu.h"

#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>

using namespace kelo;

TEST(MainMenu, hasTheItemsOfEveryProgram)
{
    std::vector<std::string> lines;
    for (const MainMenu::Section &section : MainMenu::build(QStringLiteral("Mivora")).sections) {
        for (const MainMenuItem &item : section.items)
            lines.push_back(
                QStringList{section.title, item.title, item.shortcut().toString()}.join(u'|').toStdString());
    }
    EXPECT_THAT(lines, testing::ElementsAre("Mivora|Quit Mivora|Ctrl+Q", "Edit|Undo|Ctrl+Z",
                                            "Edit|Redo|Ctrl+Shift+Z", "Edit||", "Edit|Cut|Ctrl+X",
                                            "Edit|Copy|Ctrl+C", "Edit|Paste|Ctrl+V", "Edit|Select All|Ctrl+A",
                                            "Window|Close|Ctrl+W"));
}

TEST(MainMenu, closesWindowsThatHaveAFrame)
{
    QObject application;
    MainMenu::build({}).install(application);
    QWindow panel;
    panel.setFlag(Qt::FramelessWindowHint);
    QWindow window;
    for (QWindow *each : {&panel, &window}) {
        each->show();
        each->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(each));
        QTest::keyClick(each, Qt::Key_W, Qt::ControlModifier);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
    EXPECT_TRUE(panel.isVisible());
}
