#include "KeloPanel/Screens.h"
#include "KeloPanel/ToastController.h"
#include "KeloPanel/backends/X11WorkArea.h"
#include "Platform/linux/X11Connection.h"
#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>
#include <xcb/xtest.h>

namespace kelo {

using testing::ElementsAre;

namespace {

/// A window that fills the screen, as a program's below a panel.
class Below final : public QWindow
{
public:
    Below()
    {
        setFlags(Qt::BypassWindowManagerHint);
        setGeometry(QGuiApplication::primaryScreen()->geometry());
        show();
    }

    std::vector<QPoint> presses;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        presses.push_back(event->globalPosition().toPoint());
    }
};

constexpr PanelPlace topLeft{Qt::LeftEdge | Qt::TopEdge, 10};

class PanelTest : public testing::Test
{
public:
    PanelTest()
    {
        controller.onWillShow = [this] { calls.emplace_back(controller.isVisible() ? "late" : "willShow"); };
        controller.onDidHide = [this] { calls.emplace_back(controller.isVisible() ? "early" : "didHide"); };
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&below));
    }

    ~PanelTest() override { qunsetenv("MIVORA_COMPOSITING"); }

    QWindow &window() { return *controller.panel().window(); }

    // A click as the user's, by the X server's own idea of what lies there.
    void click(QPoint point)
    {
        xcb_warp_pointer(x11.get(), XCB_WINDOW_NONE, x11.root(), 0, 0, 0, 0, std::int16_t(point.x()),
                         std::int16_t(point.y()));
        for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
            xcb_test_fake_input(x11.get(), std::uint8_t(type), XCB_BUTTON_INDEX_1, XCB_CURRENT_TIME, XCB_NONE,
                                0, 0, 0);
        x11.flush();
    }

    bool hasKeyboard(const QWindow &window)
    {
        return QTest::qWaitFor([&] { return x11.inputFocus() == window.winId(); });
    }

    // Before a panel is made.
    const bool hasShadow = qputenv("MIVORA_COMPOSITING", "1");
    const mivora::X11Connection x11;
    Below below;
    FloatingPanelController controller{mivora::sharedViews(),
                                       {.module = QStringLiteral("KeloThemeViews"),
                                        .component = QStringLiteral("KeloCard"),
                                        .size = QSize(200, 100)}};
    std::vector<std::string> calls;
};

} // namespace

TEST_F(PanelTest, tellsBeforeShowingAndAfterHiding)
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

TEST_F(PanelTest, orderedFrontItAsksNobodyAndKeepsItsPlace)
{
    EXPECT_TRUE(controller.orderFrontRegardless(topLeft, QRectF(20, 30, 800, 600)));
    controller.panel().releaseView();
    EXPECT_TRUE(controller.isVisible()) << "a visible panel keeps its view";
    window().setPosition(50, 60);
    controller.hide();
    controller.panel().releaseView();
    EXPECT_FALSE(controller.panel().window());
    EXPECT_TRUE(controller.orderFrontRegardless(topLeft, {}));
    EXPECT_EQ(window().position(), QPoint(50, 60));
    EXPECT_THAT(calls, ElementsAre("didHide"));
}

TEST_F(PanelTest, losingTheKeyboardHidesItWhenWanted)
{
    for (const bool hides : {true, false}) {
        calls.clear();
        controller.hidesOnResignKey = hides;
        controller.show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return controller.panel().isKey(); }));
        x11.setInputFocus(xcb_window_t(below.winId()));
        ASSERT_TRUE(QTest::qWaitFor([&] { return below.isActive(); }));
        EXPECT_EQ(controller.isVisible(), !hides);
        EXPECT_EQ(calls.size(), hides ? 2U : 1U);
        controller.hide();
    }
}

TEST_F(PanelTest, takesClicksOnItsCardAlone)
{
    x11.setInputFocus(xcb_window_t(below.winId()));
    ASSERT_TRUE(hasKeyboard(below));
    controller.hidesOnResignKey = false;
    ASSERT_TRUE(controller.orderFrontRegardless(topLeft, QRectF(290, 190, 800, 600)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
    // The card is in the middle of its shadow: 28 on each side.
    const std::vector<QPoint> beside{{306, 278}, {550, 278}, {428, 206}, {428, 350}, {329, 229}};
    for (const QPoint &point : beside)
        click(point);
    EXPECT_TRUE(QTest::qWaitFor([&] { return below.presses.size() == beside.size(); }));
    EXPECT_EQ(below.presses, beside);
    EXPECT_EQ(x11.inputFocus(), below.winId());

    click({330, 278});
    EXPECT_TRUE(hasKeyboard(window())) << "a click gives it the keyboard";
    EXPECT_EQ(below.presses.size(), beside.size());
    controller.hide();
    EXPECT_TRUE(hasKeyboard(below)) << "hiding gives it back";
}

TEST_F(PanelTest, remembersWhoWasInFront)
{
    const auto showInFrontOf = [&](quint32 window, quint32 process) {
        x11.setProperty(x11.root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
        x11.setProperty(xcb_window_t(below.winId()), "_NET_WM_PID", XCB_ATOM_CARDINAL, {process});
        controller.show();
        return controller.previousApp();
    };
    const auto window = quint32(below.winId());
    EXPECT_EQ(showInFrontOf(window, 1), (RunningApp{1, QStringLiteral("KeloPanelTests")}));
    EXPECT_EQ(showInFrontOf(window, quint32(QCoreApplication::applicationPid())), std::nullopt) << "it is us";
    EXPECT_EQ(showInFrontOf(XCB_WINDOW_NONE, 1), std::nullopt);
}

TEST_F(PanelTest, oneToastReplacesTheOtherLetsClicksThroughAndGoes)
{
    ToastController toast(mivora::sharedViews(), QDBusConnection(QStringLiteral("none")));
    const auto geometryAfter = [&](const char *text) {
        toast.show(QLatin1String(text));
        std::vector<QRect> found;
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->title() == QLatin1String("Mivora") && QTest::qWaitForWindowExposed(window))
                found.push_back(window->geometry());
        }
        EXPECT_EQ(found.size(), 1U);
        return found.front();
    };
    const int narrow = geometryAfter("Short.").width();
    const QRect wide = geometryAfter("Couldn't open Google Meet. Link copied.");
    EXPECT_GT(wide.width(), narrow);
    EXPECT_EQ(wide.bottom(), 719) << "a tenth of the screen above its lower edge";
    click(wide.center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return below.presses.size() == 1; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !toast.isVisible(); }, 8000)) << "it goes by itself";
}

TEST(Screens, havePlaceForPanelsInTheMiddleAndBesideAnAnchor)
{
    // A bar at the top.
    const QRectF area(0, 28, 1920, 1052);
    const QSizeF panel(400, 200);
    // 60 % of 1052 counted from y = 1080 upwards is 448.8.
    EXPECT_EQ(centredOrigin(area, panel), QPointF(760, 348.8));

    const struct
    {
        const char *name;
        QRectF anchor;
        QPointF expected;
    } rows[] = {
        {"below a button of the top bar", {900, 0, 40, 28}, {720, 40}},
        {"just fits below", {900, 828, 40, 40}, {720, 880}},
        {"one too low: above", {900, 829, 40, 40}, {720, 617}},
        {"left edge", {0, 0, 20, 28}, {0, 40}},
        {"right edge", {1900, 0, 20, 28}, {1520, 40}},
    };

    for (const auto &row : rows)
        EXPECT_EQ(originNear(row.anchor, area, panel), row.expected) << row.name;
    EXPECT_EQ(originInside({200, 60}, {100, 50, 300, 150}, panel), QPointF(0, 50))
        << "top and right are kept";
}

TEST(Screens, loseOnlyTheBarsThatStandOnThem)
{
    // Two screens side by side, the right one lower: the desktop is 3200 x 1080.
    const QSize desktop(3200, 1080);
    const QRect left(0, 0, 1920, 1080);
    const QRect right(1920, 280, 1280, 800);
    const Strut topOfLeft{0, 0, 28, 0, 0, 0, 0, 0, 0, 1919, 0, 0};
    const Strut bottomOfRight{0, 0, 0, 60, 0, 0, 0, 0, 0, 0, 1920, 3199};
    const Strut leftOfLeft{48, 0, 0, 0, 28, 1079, 0, 0, 0, 0, 0, 0};
    const Strut rightOfRight{0, 40, 0, 0, 0, 0, 280, 1079, 0, 0, 0, 0};
    // Above the right screen there is a gap of 280 that a bar on it has to count in.
    const Strut topOfRight{0, 0, 310, 0, 0, 0, 0, 0, 1920, 3199, 0, 0};
    const std::vector<Strut> all{topOfLeft, bottomOfRight, leftOfLeft, rightOfRight, topOfRight,
                                 {},        {1, 2, 3}};
    EXPECT_EQ(withoutStruts(left, desktop, all), QRect(48, 28, 1872, 1052));
    EXPECT_EQ(withoutStruts(right, desktop, all), QRect(1920, 310, 1240, 710));
    const std::vector<Strut> absurd{{0, 0, 1080, 0, 0, 0, 0, 0, 0, 3199, 0, 0}};
    EXPECT_EQ(withoutStruts(right, desktop, absurd), right);
}

} // namespace kelo
