#include "KeloPanel/FloatingPanelController.h"

#include "KeloPanel/ToastController.h"
#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>

namespace kelo {

using testing::ElementsAre;

class FloatingPanelControllerTest : public testing::Test
{
public:
    FloatingPanelControllerTest()
    {
        controller.onWillShow = [this] { calls.emplace_back(controller.isVisible() ? "late" : "willShow"); };
        controller.onDidHide = [this] { calls.emplace_back(controller.isVisible() ? "early" : "didHide"); };
    }

    QWindow &window() { return *controller.panel().window(); }

    ViewLoader &views = mivora::sharedViews();
    FloatingPanelController controller{views,
                                       {.module = QStringLiteral("KeloThemeViews"),
                                        .component = QStringLiteral("KeloCard"),
                                        .size = QSize(200, 100)}};
    std::vector<std::string> calls;
};

TEST_F(FloatingPanelControllerTest, tellsBeforeShowingAndAfterHiding)
{
    controller.hide();
    EXPECT_FALSE(controller.panel().window()) << "nothing is loaded before it is shown";
    controller.show();
    EXPECT_TRUE(controller.isVisible());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(window().geometry().center().x(), screen.center().x());
    EXPECT_LT(window().geometry().center().y(), screen.center().y());
    controller.toggle();
    EXPECT_FALSE(controller.isVisible());
    controller.toggle();
    controller.hide();
    controller.show(QRect(300, 0, 20, 20));
    EXPECT_EQ(window().position(), QPoint(310 - window().width() / 2, 32));
    controller.hide();
    EXPECT_THAT(calls, ElementsAre("willShow", "didHide", "willShow", "didHide", "willShow", "didHide"));
}

TEST_F(FloatingPanelControllerTest, orderedFrontItAsksNobodyAndKeepsItsPlace)
{
    EXPECT_TRUE(controller.orderFrontRegardless(QPointF(30, 40)));
    controller.panel().releaseView();
    EXPECT_TRUE(controller.isVisible()) << "a visible panel keeps its view";
    controller.hide();
    controller.panel().releaseView();
    EXPECT_FALSE(controller.panel().window());
    EXPECT_TRUE(controller.orderFrontRegardless({}));
    EXPECT_EQ(window().position(), QPoint(30, 40));
    EXPECT_THAT(calls, ElementsAre("didHide"));
}

TEST_F(FloatingPanelControllerTest, losingTheKeyboardHidesItWhenWanted)
{
    for (const bool hides : {true, false}) {
        calls.clear();
        controller.hidesOnResignKey = hides;
        controller.show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return controller.panel().isKey(); }));
        QWindow other;
        other.show();
        other.requestActivate();
        ASSERT_TRUE(QTest::qWaitFor([&] { return other.isActive(); }));
        EXPECT_EQ(controller.isVisible(), !hides);
        EXPECT_EQ(calls.size(), hides ? 2U : 1U);
        controller.hide();
    }
}

TEST_F(FloatingPanelControllerTest, handledKeysGoNoFurther)
{
    controller.show();
    controller.keyHandler = [](const QKeyEvent &event) { return event.nativeScanCode() == 36; };
    const auto goesOn = [&](QEvent::Type type, quint32 scanCode) {
        QKeyEvent event(type, Qt::Key_unknown, Qt::NoModifier, scanCode, 0, 0);
        return !static_cast<QObject &>(controller.panel()).eventFilter(&window(), &event);
    };
    EXPECT_FALSE(goesOn(QEvent::KeyPress, 36));
    EXPECT_TRUE(goesOn(QEvent::KeyRelease, 36));
    EXPECT_TRUE(goesOn(QEvent::KeyPress, 44));
}

TEST_F(FloatingPanelControllerTest, oneToastReplacesTheOtherAndGoes)
{
    ToastController toast(views, QDBusConnection(QStringLiteral("none")));
    const auto widthAfter = [&](const char *text) {
        toast.show(QLatin1String(text));
        std::vector<int> widths;
        for (const QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible() && window->title() == QLatin1String("Mivora"))
                widths.push_back(window->width());
        }
        EXPECT_EQ(widths.size(), 1U);
        return widths.front();
    };
    const int narrow = widthAfter("Short.");
    EXPECT_GT(widthAfter("Couldn't open Google Meet. Link copied."), narrow);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !toast.isVisible(); }, 8000)) << "it goes by itself";
}

} // namespace kelo
