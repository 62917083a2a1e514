#include "JoinPanel/PanelUnderTest.h"
#include "support/AccessibleView.h"
#include "support/FakeNotifications.h"
#include "support/MeetingFactory.h"
#include "support/PrivateBus.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

namespace mivora {

namespace {

using support::AccessibleView;
using testing::ElementsAre;

const Timestamp now = at("2026-03-10T08:55:00Z");
const Meeting review = withLink(makeMeeting("Design review", now + Seconds(300)));
const Meeting lunch = makeMeeting("Lunch", now + Seconds(300));

class JoinPanelControllerTest : public testing::Test, public PanelUnderTest
{
public:
    void turnTo(QWindow &wanted)
    {
        wanted.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&wanted));
    }

    void click() { QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(40, 150)); }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, modifiers, quint32(key + 8), 0, 0);
        QCoreApplication::sendEvent(window(), &event);
    }
};

} // namespace

TEST_F(JoinPanelControllerTest, keysActByTheirPlaceOnTheKeyboardOnceItIsPressedAndWhileItIsActive)
{
    QWindow other;
    other.show();
    panel.show(review, now);
    turnTo(*window());
    press(KEY_ENTER);
    click();
    for (const int key : {KEY_S, KEY_ENTER, KEY_KPENTER, KEY_ESC, KEY_J})
        press(key);
    press(KEY_S, Qt::MetaModifier | Qt::ShiftModifier);
    turnTo(other);
    press(KEY_ENTER);
    EXPECT_THAT(actions, ElementsAre("snooze Design review", "join Design review", "join Design review",
                                     "dismiss Design review", "snooze Design review"));
}

TEST_F(JoinPanelControllerTest, actionsConcernTheMeetingOnShowNow)
{
    panel.show(review, now);
    click();
    turnTo(*window());
    panel.show(lunch, now);
    press(KEY_ENTER);
    panel.refresh(review, now);
    press(KEY_ESC);
    panel.refresh(std::nullopt, now + Seconds(60));
    press(KEY_ESC);
    EXPECT_THAT(actions, ElementsAre("join Lunch", "dismiss Design review", "dismiss Design review"));
    EXPECT_EQ(panel.model().timeText(), QLatin1String("Starts in 4m"));
    panel.hide();
    panel.refresh(lunch, now + Seconds(120));
    EXPECT_EQ(panel.model().meeting(), review) << "a hidden panel is not refreshed";
    EXPECT_EQ(panel.model().now(), now + Seconds(60));
}

TEST_F(JoinPanelControllerTest, standsInTheCornerThatWasChosenBeforeItWasShown)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry().adjusted(12, 12, -12, -12);
    const auto placeIn = [&](PanelCorner corner) {
        panel.hide();
        prefs.setPanelCorner(corner);
        panel.show(review, now);
        return window()->geometry();
    };
    EXPECT_EQ(placeIn(PanelCorner::topLeft).topLeft(), room.topLeft());
    EXPECT_EQ(placeIn(PanelCorner::bottomLeft).bottomLeft(), room.bottomLeft());
    EXPECT_EQ(placeIn(PanelCorner::bottomRight).bottomRight(), room.bottomRight());
    EXPECT_EQ(placeIn(PanelCorner::topRight).topRight(), room.topRight());
    prefs.setPanelCorner(PanelCorner::topLeft);
    panel.show(lunch, now);
    EXPECT_EQ(window()->geometry().topRight(), room.topRight());
}

TEST_F(JoinPanelControllerTest, hasButtonsThatDoWhatTheySay)
{
    QAccessible::setActive(true);
    panel.show(review, now);
    const AccessibleView view(*window());
    EXPECT_TRUE(view.find(QAccessible::AlertMessage, QStringLiteral("Design review, Starts in 5m")));
    const QStringList buttons = view.names(QAccessible::Button);
    EXPECT_EQ(buttons.join(u'|'), QStringLiteral("Join|Snooze 1 min|Dismiss"));
    for (const QString &button : buttons)
        EXPECT_TRUE(view.click(QAccessible::Button, button));
    EXPECT_THAT(actions, ElementsAre("join Design review", "snooze Design review", "dismiss Design review"));
    panel.setDiscreet(true);
    panel.show(lunch, now);
    EXPECT_TRUE(view.find(QAccessible::AlertMessage, QStringLiteral("Meeting, Starts in 5m")));
    EXPECT_EQ(view.names(QAccessible::Button).join(u'|'), QStringLiteral("Snooze 1 min|Dismiss"));
}

TEST_F(JoinPanelControllerTest, isANotificationWhereWindowsCannotBePlaced)
{
    qputenv("MIVORA_PANEL", "notification");
    support::PrivateBus bus;
    kelo::FakeNotifications desktop(bus.connection());
    JoinPanelController notified(prefs, views, recorded, now, bus.connection());
    std::vector<std::string> expected;
    const auto isShown = [&](const char *call) {
        expected.emplace_back(call);
        return QTest::qWaitFor([&] { return desktop.calls.size() == expected.size(); });
    };
    notified.show(review, now);
    EXPECT_TRUE(notified.isVisible());
    ASSERT_TRUE(isShown("notify 0 Design review|Starts in 5m · Zoom|"
                        "default,Join,join,Join,snooze,Snooze 1 min,dismiss,Dismiss|0"));
    notified.refresh(lunch, now + Seconds(60));
    ASSERT_TRUE(isShown("notify 7 Lunch|Starts in 4m|snooze,Snooze 1 min,dismiss,Dismiss|0"));
    notified.setDiscreet(true);
    ASSERT_TRUE(isShown("notify 7 Meeting|Starts in 4m|snooze,Snooze 1 min,dismiss,Dismiss|0"));
    // Nobody hides it here: it is still wanted, whatever takes it away. The desktop's word that it closed
    // what was acted upon is not the user's about what comes next.
    for (const char *action : {"join", "default", "snooze", "dismiss", ""}) {
        if (*action)
            desktop.invoke(desktop.id, QLatin1String(action));
        desktop.closed(desktop.id, 2);
        ASSERT_TRUE(isShown("notify 0 Meeting|Starts in 4m|snooze,Snooze 1 min,dismiss,Dismiss|0")) << action;
    }
    EXPECT_THAT(actions,
                ElementsAre("join Lunch", "join Lunch", "snooze Lunch", "dismiss Lunch", "dismiss Lunch"));
    desktop.closed(desktop.id, 1);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        notified.refresh(lunch, now + Seconds(60));
        return desktop.calls.size() > expected.size();
    })) << "the desktop took it away by itself";
    notified.hide();
    EXPECT_FALSE(notified.isVisible());
    expected.emplace_back(expected.back());
    ASSERT_TRUE(isShown("close 13"));
    EXPECT_EQ(desktop.calls, expected) << "and presented once for each change";

    JoinPanelController lonely(prefs, views, {}, now, QDBusConnection(QStringLiteral("none")));
    lonely.show(review, now);
    EXPECT_TRUE(QTest::qWaitFor([&] { return lonely.controller().isVisible(); })) << "nor notified of";
    lonely.hide();
    EXPECT_FALSE(lonely.isVisible());
    qunsetenv("MIVORA_PANEL");
}

TEST(JoinPanelModel, tellsWhenTheMeetingStartsOrStartedAndAnnouncesItOnce)
{
    const struct
    {
        double left;
        const char *text;
        bool hasStarted;
        bool isAnnounced;
    } rows[] = {
        {3901, "Starts in 1h 6m", false, true},  {3600, "Starts in 1h", false, true},
        {3540.5, "Starts in 1h", false, false},  {61, "Starts in 2m", false, true},
        {60, "Starts in 1m", false, true},       {59.999, "Starting now", false, true},
        {0.5, "Starting now", false, false},     {0, "Starting now", true, true},
        {-59.999, "Starting now", true, false},  {-60, "Started 1m ago", true, true},
        {-119.5, "Started 1m ago", true, false}, {-4500, "Started 75m ago", true, true},
    };

    JoinPanelModel model(ten - Seconds(9999));
    model.setMeeting(makeMeeting("Stand\nup", ten));
    EXPECT_EQ(model.title(), QStringLiteral("Stand up"));
    for (const auto &row : rows) {
        const QSignalSpy changed(&model, &JoinPanelModel::changed);
        model.setNow(ten - Seconds(row.left));
        EXPECT_EQ(model.timeText().toStdString(), row.text);
        EXPECT_EQ(model.hasStarted(), row.hasStarted) << row.left;
        EXPECT_EQ(changed.count(), row.isAnnounced ? 1 : 0) << row.left;
    }
}

TEST(JoinPanelModel, announcesOnlyWhatIsShown)
{
    JoinPanelModel model(ten);
    Meeting meeting = makeMeeting("M", ten);
    meeting.calendarColor = Color{1, 2, 3};
    const QSignalSpy changed(&model, &JoinPanelModel::changed);
    model.setMeeting(meeting);
    EXPECT_EQ(model.accentColor(), QStringLiteral("#010203"));
    meeting.attendeeCount = 5;
    model.setMeeting(meeting);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(model.meeting(), meeting);
    model.setMeeting(makeMeeting("M", ten));
    EXPECT_EQ(model.accentColor(), QString());
}

} // namespace mivora
