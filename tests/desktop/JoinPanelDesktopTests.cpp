#include "KeloPanel/backends/X11Connection.h"
#include "desktop/Desktop.h"
#include "desktop/PanelUnderTest.h"
#include "support/MeetingFactory.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QStandardPaths>
#include <cstdlib>
#include <gmock/gmock.h>
#include <optional>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

// The Join panel under a window manager with a task bar, used by somebody who types into a terminal.
namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::waitFor;
using testing::ElementsAre;

const Timestamp now = at("2026-03-10T08:59:00Z");
const Meeting review = withLink(makeMeeting("Design review", now + Seconds(60)));

std::optional<support::Desktop> desktop;

// What the X server says about the window, so that nothing rests on what Qt believes.
QRect frameOnScreen(const QWindow &window)
{
    return kelo::X11Connection().frame(xcb_window_t(window.winId()));
}

xcb_window_t topmostVisibleWindow()
{
    const kelo::X11Connection x11;
    auto *tree = xcb_query_tree_reply(x11.get(), xcb_query_tree(x11.get(), x11.root()), nullptr);
    xcb_window_t top = XCB_WINDOW_NONE;
    for (int i = 0; i < xcb_query_tree_children_length(tree); ++i) {
        const xcb_window_t child = xcb_query_tree_children(tree)[i];
        auto *attributes =
            xcb_get_window_attributes_reply(x11.get(), xcb_get_window_attributes(x11.get(), child), nullptr);
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            top = child;
        std::free(attributes);
    }
    std::free(tree);
    return top;
}

QRect workArea()
{
    const kelo::X11Connection x11;
    const auto area = x11.values(x11.root(), "_NET_WORKAREA");
    return {int(area[0]), int(area[1]), int(area[2]), int(area[3])};
}

/// While it lives, the screen has another resolution (RandR).
class SmallerScreen final
{
public:
    SmallerScreen()
    {
        const QStringList mode{QStringLiteral("small")};
        xrandr(QStringList(QStringLiteral("--newmode")) + mode +
               QStringLiteral("38.25 800 832 912 1024 600 603 607 624").split(QLatin1Char(' ')));
        xrandr(QStringList{QStringLiteral("--addmode"), QStringLiteral("screen")} + mode);
        xrandr(m_output + mode);
    }

    ~SmallerScreen() { xrandr(m_output + QStringList(m_mode)); }
    Q_DISABLE_COPY_MOVE(SmallerScreen)

private:
    static void xrandr(const QStringList &arguments)
    {
        EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
    }

    const QStringList m_output{QStringLiteral("--output"), QStringLiteral("screen"),
                               QStringLiteral("--mode")};
    const QSize m_size = QGuiApplication::primaryScreen()->size();
    const QString m_mode = QStringLiteral("%1x%2").arg(m_size.width()).arg(m_size.height());
};

xcb_window_t focus()
{
    return kelo::X11Connection().inputFocus();
}

} // namespace

class JoinPanelOnDesktop : public testing::Test
{
public:
    static void SetUpTestSuite()
    {
        if (support::Desktop::isInstalled())
            desktop.emplace().startTerminal();
    }

    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        if (!desktop)
            GTEST_SKIP() << "openbox, xfce4-panel, xterm or xdotool is not installed";
        clickTerminal();
        terminal = focus();
    }

    static void clickTerminal()
    {
        desktop->act({QStringLiteral("mousemove"), QStringLiteral("200"), QStringLiteral("400"),
                      QStringLiteral("click"), QStringLiteral("1")});
    }

    void showPanel()
    {
        test.panel.show(review, now);
        ASSERT_TRUE(waitFor([&] { return test.window() && test.window()->isExposed(); }));
    }

    PanelUnderTest test;
    xcb_window_t terminal = XCB_WINDOW_NONE;
};

TEST_F(JoinPanelOnDesktop, standsInTheCornersOfTheWorkArea)
{
    const QRect area = workArea();
    ASSERT_NE(area, QRect(QPoint(), QGuiApplication::primaryScreen()->size()));
    const std::vector<std::pair<PanelCorner, QPoint>> expected{
        {PanelCorner::topRight, {area.x() + area.width() - 380 - 12, area.y() + 12}},
        {PanelCorner::bottomLeft, {area.x() + 12, area.y() + area.height() - 150 - 12}},
    };
    for (const auto &[corner, origin] : expected) {
        test.prefs.setPanelCorner(corner);
        showPanel();
        EXPECT_EQ(frameOnScreen(*test.window()), QRect(origin, QSize(380, 150)))
            << rawValue(corner).toStdString();
        test.panel.hide();
    }
}

TEST_F(JoinPanelOnDesktop, staysOnAScreenThatBecomesSmaller)
{
    if (QStandardPaths::findExecutable(QStringLiteral("xrandr")).isEmpty())
        GTEST_SKIP() << "xrandr is not installed";
    showPanel();
    const SmallerScreen smaller;
    EXPECT_TRUE(waitFor([&] { return workArea().right() < 800; }));
    const auto isInside = [&] { return workArea().contains(frameOnScreen(*test.window())); };
    EXPECT_TRUE(waitFor(isInside)) << frameOnScreen(*test.window()).x();
    EXPECT_TRUE(test.panel.isVisible());
    test.panel.hide();
    showPanel();
    const QRect frame = frameOnScreen(*test.window());
    EXPECT_EQ(frame.topRight(), workArea().topRight() + QPoint(-12, 12)) << "the corner of what there is now";
}

TEST_F(JoinPanelOnDesktop, losesNoKeystrokeOfTheTerminal)
{
    const QString text = QStringLiteral("the quick brown fox jumps over the lazy dog ").repeated(5).trimmed();
    const auto before = desktop->read(QStringLiteral("typed"));
    const auto typing = desktop->startActing(
        {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text + QLatin1Char('\n')});
    for (int round = 0; round < 3; ++round) {
        waitFor(250ms);
        ASSERT_EQ(typing->state(), QProcess::Running) << "the typing must outlast the showing";
        showPanel();
        waitFor(150ms);
        EXPECT_EQ(focus(), terminal);
        test.panel.hide();
    }
    ASSERT_TRUE(waitFor([&] { return typing->state() == QProcess::NotRunning; }, 60s));
    const QByteArray expected = before + text.toLatin1() + '\n';
    EXPECT_TRUE(waitFor([&] { return desktop->read(QStringLiteral("typed")) == expected; }))
        << desktop->read(QStringLiteral("typed")).toStdString();
    EXPECT_THAT(test.actions, ElementsAre());
}

TEST_F(JoinPanelOnDesktop, isKnownToNoTaskBarAndStaysOnEveryWorkspace)
{
    showPanel();
    const kelo::X11Connection x11;
    EXPECT_THAT(x11.values(x11.root(), "_NET_CLIENT_LIST"),
                testing::Not(testing::Contains(std::uint32_t(test.window()->winId()))));
    desktop->act({QStringLiteral("set_desktop"), QStringLiteral("1")});
    EXPECT_EQ(topmostVisibleWindow(), test.window()->winId());
    desktop->act({QStringLiteral("set_desktop"), QStringLiteral("0")});
}

TEST_F(JoinPanelOnDesktop, isAnnouncedToScreenReaders)
{
    static std::vector<std::string> announced;
    announced.clear();
    // As it is once a screen reader has asked for it.
    QPlatformAccessibility *platform = QGuiApplicationPrivate::platformIntegration()->accessibility();
    platform->setActive(true);
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
        if (event->type() == QAccessible::Alert)
            announced.push_back(event->accessibleInterface()->text(QAccessible::Name).toStdString());
    });
    showPanel();
    QAccessible::installUpdateHandler(before);
    platform->setActive(false);
    EXPECT_THAT(announced, ElementsAre("Design review, Starts in 1m"));
}

TEST_F(JoinPanelOnDesktop, isNotDrawnWhileNothingChanges)
{
    showPanel();
    waitFor(500ms);
    QSignalSpy frames(test.window(), SIGNAL(frameSwapped()));
    test.panel.refresh(review, now);
    waitFor(1s);
    EXPECT_EQ(frames.count(), 0);
    test.panel.refresh(review, now + Seconds(30));
    EXPECT_TRUE(waitFor([&] { return frames.count() > 0; })) << "the time line has changed";
}

} // namespace mivora
