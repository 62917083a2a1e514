#include "KeloPanel/FloatingPanelController.h"
#include "Platform/linux/X11Connection.h"
#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>
#include <xcb/xtest.h>

namespace kelo {

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

class PanelOnX11 : public testing::Test
{
public:
    PanelOnX11() { qputenv("MIVORA_COMPOSITING", "1"); }

    ~PanelOnX11() override { qunsetenv("MIVORA_COMPOSITING"); }

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

    const mivora::X11Connection x11;
    Below below;
    PanelContent content{.module = QStringLiteral("KeloThemeViews"),
                         .component = QStringLiteral("KeloCard"),
                         .size = QSize(200, 100)};
};

} // namespace

TEST_F(PanelOnX11, takesClicksOnItsCardAlone)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&below));
    x11.setInputFocus(below.winId());
    ASSERT_TRUE(hasKeyboard(below));
    FloatingPanelController panel(mivora::sharedViews(), content);
    panel.hidesOnResignKey = false;
    ASSERT_TRUE(panel.orderFrontRegardless(QPointF(300, 200)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(panel.panel().window()));
    // The card is in the middle of its shadow: 28 on each side.
    const std::vector<QPoint> beside{{306, 278}, {550, 278}, {428, 206}, {428, 350}, {329, 229}};
    for (const QPoint &point : beside)
        click(point);
    EXPECT_TRUE(QTest::qWaitFor([&] { return below.presses.size() == beside.size(); }));
    EXPECT_EQ(below.presses, beside);
    EXPECT_EQ(x11.inputFocus(), below.winId());

    click({330, 278});
    EXPECT_TRUE(hasKeyboard(*panel.panel().window())) << "a click gives it the keyboard";
    EXPECT_EQ(below.presses.size(), beside.size());
    panel.hide();
    EXPECT_TRUE(hasKeyboard(below)) << "hiding gives it back";

    content.takesInput = false;
    FloatingPanelController toast(mivora::sharedViews(), content);
    ASSERT_TRUE(toast.orderFrontRegardless(QPointF(300, 200)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(toast.panel().window()));
    click({330, 278});
    EXPECT_TRUE(QTest::qWaitFor([&] { return below.presses.size() > beside.size(); })) << "only looked at";
}

TEST_F(PanelOnX11, remembersWhoWasInFront)
{
    FloatingPanelController panel(mivora::sharedViews(), content);
    const auto showInFrontOf = [&](quint32 window, quint32 process) {
        x11.setProperty(x11.root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
        x11.setProperty(xcb_window_t(below.winId()), "_NET_WM_PID", XCB_ATOM_CARDINAL, {process});
        panel.show();
        panel.hide();
        return panel.previousApp();
    };
    const auto window = quint32(below.winId());
    EXPECT_EQ(showInFrontOf(window, 1), (RunningApp{1, QStringLiteral("KeloPanelX11Tests")}));
    EXPECT_EQ(showInFrontOf(window, quint32(QCoreApplication::applicationPid())), std::nullopt) << "it is us";
    EXPECT_EQ(showInFrontOf(XCB_WINDOW_NONE, 1), std::nullopt);
}

} // namespace kelo
