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

using mivora::X11Connection;

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

// A click as the user's, by the X server's own idea of what lies there.
void click(QPoint point)
{
    const X11Connection x11;
    xcb_warp_pointer(x11.get(), XCB_WINDOW_NONE, x11.root(), 0, 0, 0, 0, std::int16_t(point.x()),
                     std::int16_t(point.y()));
    for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
        xcb_test_fake_input(x11.get(), std::uint8_t(type), XCB_BUTTON_INDEX_1, XCB_CURRENT_TIME, XCB_NONE, 0,
                            0, 0);
    x11.flush();
}

} // namespace

class PanelOnX11 : public testing::Test
{
public:
    PanelOnX11() { qputenv("MIVORA_COMPOSITING", "1"); }

    ~PanelOnX11() override { qunsetenv("MIVORA_COMPOSITING"); }

    void showPanel(bool takesInput = true)
    {
        panel.emplace(mivora::sharedViews(), PanelContent{.module = QStringLiteral("KeloThemeViews"),
                                                          .component = QStringLiteral("KeloCard"),
                                                          .properties = {},
                                                          .size = QSize(200, 100),
                                                          .cornerRadius = {},
                                                          .title = {},
                                                          .takesInput = takesInput});
        panel->hidesOnResignKey = false;
        ASSERT_TRUE(panel->orderFrontRegardless(QPointF(300, 200)));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(panel->panel().window()));
    }

    bool hasKeyboard(const QWindow &window)
    {
        return QTest::qWaitFor([&] { return x11.inputFocus() == window.winId(); });
    }

    const X11Connection x11;
    Below below;
    std::optional<FloatingPanelController> panel;
};

TEST_F(PanelOnX11, takesClicksOnItsCardAlone)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&below));
    x11.setInputFocus(below.winId());
    ASSERT_TRUE(hasKeyboard(below));
    showPanel();
    // The card is in the middle of its shadow: 28 on each side.
    const std::vector<QPoint> beside{{306, 278}, {550, 278}, {428, 206}, {428, 350}, {329, 229}};
    for (const QPoint &point : beside)
        click(point);
    EXPECT_TRUE(QTest::qWaitFor([&] { return below.presses.size() == beside.size(); }));
    EXPECT_EQ(below.presses, beside);
    EXPECT_EQ(x11.inputFocus(), below.winId());

    click({330, 278});
    EXPECT_TRUE(hasKeyboard(*panel->panel().window())) << "a click gives it the keyboard";
    EXPECT_EQ(below.presses.size(), beside.size());
    panel->hide();
    EXPECT_TRUE(hasKeyboard(below)) << "hiding gives it back";
}

TEST_F(PanelOnX11, letsAllClicksThroughWhereItIsOnlyLookedAt)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&below));
    showPanel(false);
    click({428, 278});
    EXPECT_TRUE(QTest::qWaitFor([&] { return below.presses.size() == 1; }));
}

} // namespace kelo
