#include "KeloTheme/ViewWindow.h"

#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

// Any component of the views will do.
static ViewSpec cardSpec()
{
    return {.module = QStringLiteral("KeloThemeViews"),
            .component = QStringLiteral("KeloCard"),
            .size = {300, 200},
            .title = QStringLiteral("Card")};
}

TEST(ViewWindow, comesAndGoesAndKeepsItsPlace)
{
    ViewWindow card(mivora::sharedViews(), cardSpec(), std::chrono::milliseconds(50));
    QSignalSpy closed(&card, &ViewWindow::closed);
    EXPECT_FALSE(card.window());
    ASSERT_TRUE(card.show());
    QWindow *window = card.window();
    EXPECT_EQ(window->minimumSize(), QSize(300, 200));
    EXPECT_EQ(window->maximumSize(), QSize(300, 200));
    EXPECT_EQ(window->geometry().center(), window->screen()->availableGeometry().center());

    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    window->setPosition(11, 22);
    QCoreApplication::processEvents();
    window->close();
    EXPECT_EQ(closed.count(), 1);
    card.setTitle(QStringLiteral("Other"));
    card.show();
    ViewWindow closedLater(mivora::sharedViews(), cardSpec(), std::chrono::milliseconds(50));
    closedLater.show();
    closedLater.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !closedLater.window(); }));
    ASSERT_EQ(card.window(), window) << "it is in use again";
    EXPECT_EQ(window->title(), QStringLiteral("Other"));
    card.close();
    EXPECT_EQ(closed.count(), 1) << "not by the user";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !card.window(); }));
    card.show();
    EXPECT_EQ(card.window()->position(), QPoint(11, 22));
    EXPECT_EQ(card.window()->title(), QStringLiteral("Other"));
}

TEST(ViewWindow, isNotClosedByTheUserWhenTheProgramQuits)
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    ViewWindow card(mivora::sharedViews(), cardSpec());
    QSignalSpy closed(&card, &ViewWindow::closed);
    card.show(Attention::left);
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();
    EXPECT_FALSE(card.isVisible());
    EXPECT_EQ(closed.count(), 0);
}

} // namespace kelo
