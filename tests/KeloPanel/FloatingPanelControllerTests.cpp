#include "KeloPanel/FloatingPanelController.h"

#include "KeloPanel/ToastController.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace kelo {

namespace {

using testing::ElementsAre;

class Text final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text MEMBER text CONSTANT)

public:
    QString text = QStringLiteral("Hello");
};

} // namespace

class FloatingPanelControllerTest : public testing::Test
{
public:
    FloatingPanelControllerTest()
    {
        controller.onWillShow = [this] { calls.emplace_back(controller.isVisible() ? "late" : "willShow"); };
        controller.onDidHide = [this] { calls.emplace_back(controller.isVisible() ? "early" : "didHide"); };
    }

    bool press(quint32 scanCode)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, scanCode, 0, 0);
        event.ignore();
        QWindow *window = controller.panel().window();
        QCoreApplication::sendEvent(window, &event);
        return !keys.empty() && keys.back() == scanCode;
    }

    Text text;
    Appearance appearance{QDBusConnection(QStringLiteral("none"))};
    ViewLoader views{appearance};
    FloatingPanelController controller{
        views,
        {.module = QStringLiteral("KeloPanelViews"),
         .component = QStringLiteral("ToastView"),
         .properties = {{QStringLiteral("toast"), QVariant::fromValue<QObject *>(&text)}},
         .size = QSize(200, 100),
         .cornerRadius = {},
         .title = {},
         .takesInput = true}};
    std::vector<std::string> calls;
    std::vector<quint32> keys;
};

TEST_F(FloatingPanelControllerTest, loadsNothingBeforeItIsShown)
{
    EXPECT_FALSE(controller.isVisible());
    controller.hide();
    EXPECT_FALSE(views.isLoaded());
    EXPECT_THAT(calls, ElementsAre());
}

TEST_F(FloatingPanelControllerTest, tellsBeforeShowingAndAfterHiding)
{
    controller.show();
    EXPECT_TRUE(controller.isVisible());
    controller.toggle();
    EXPECT_FALSE(controller.isVisible());
    controller.hide();
    controller.show(QRect(100, 0, 20, 20));
    EXPECT_EQ(controller.panel().window()->y(), 32);
    EXPECT_THAT(calls, ElementsAre("willShow", "didHide", "willShow"));
}

TEST_F(FloatingPanelControllerTest, orderedFrontItAsksNobodyAndKeepsItsPlace)
{
    EXPECT_TRUE(controller.orderFrontRegardless(QPointF(30, 40)));
    EXPECT_EQ(controller.panel().window()->position(), QPoint(30, 40));
    controller.hide();
    EXPECT_TRUE(controller.orderFrontRegardless({}));
    EXPECT_EQ(controller.panel().window()->position(), QPoint(30, 40));
    EXPECT_THAT(calls, ElementsAre("didHide"));
}

TEST_F(FloatingPanelControllerTest, staysOnAScreenThatBecomesSmaller)
{
    QScreen *screen = QGuiApplication::primaryScreen();
    const QRect visible = screen->availableGeometry();
    const QPoint beyond = visible.bottomRight() - QPoint(20, 30);
    controller.orderFrontRegardless(QPointF(beyond));
    QWindow *window = controller.panel().window();
    ASSERT_EQ(window->position(), beyond);
    // As if it had been larger before.
    Q_EMIT screen->geometryChanged(screen->geometry());
    EXPECT_TRUE(QTest::qWaitFor([&] { return visible.contains(window->geometry()); }));
    EXPECT_EQ(window->geometry().bottomRight(), visible.bottomRight());
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

    class Witness final : public QObject
    {
    public:
        bool eventFilter(QObject *, QEvent *event) override
        {
            types.push_back(event->type());
            return false;
        }

        std::vector<QEvent::Type> types;
    };

    // Filters run from the newest to the oldest: this one sees what the panel's own let through.
    Witness witness;
    QWindow *window = controller.panel().window();
    window->removeEventFilter(&controller.panel());
    window->installEventFilter(&witness);
    window->installEventFilter(&controller.panel());
    controller.keyHandler = [this](const KeyEvent &event) {
        keys.push_back(event.nativeScanCode);
        return event.nativeScanCode == 36;
    };
    EXPECT_TRUE(press(36));
    EXPECT_THAT(witness.types, ElementsAre());
    EXPECT_TRUE(press(44));
    EXPECT_THAT(witness.types, ElementsAre(QEvent::KeyPress));
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, 36, 0, 0);
    QCoreApplication::sendEvent(window, &release);
    EXPECT_THAT(witness.types, ElementsAre(QEvent::KeyPress, QEvent::KeyRelease));
    EXPECT_THAT(keys, ElementsAre(36, 44));
}

TEST_F(FloatingPanelControllerTest, theViewIsMadeAnewAfterItsRelease)
{
    controller.orderFrontRegardless(QPointF(5, 6));
    controller.panel().releaseView();
    EXPECT_TRUE(controller.panel().window()) << "a visible panel keeps its view";
    controller.hide();
    controller.panel().releaseView();
    EXPECT_FALSE(controller.panel().window());
    EXPECT_TRUE(controller.orderFrontRegardless({}));
    EXPECT_EQ(controller.panel().window()->position(), QPoint(5, 6));
}

TEST_F(FloatingPanelControllerTest, withoutTheViewsNothingIsShownAndNothingBreaks)
{
    const QByteArray before = qgetenv("MIVORA_VIEWS");
    qputenv("MIVORA_VIEWS", "/nonexistent/views.so");
    ViewLoader missing(appearance);
    FloatingPanelController panel(missing, {});
    EXPECT_FALSE(panel.orderFrontRegardless({}));
    panel.show();
    EXPECT_FALSE(panel.isVisible());
    panel.hide();
    before.isEmpty() ? qunsetenv("MIVORA_VIEWS") : qputenv("MIVORA_VIEWS", before);
}

TEST_F(FloatingPanelControllerTest, oneToastReplacesTheOther)
{
    ToastController toast(views, QDBusConnection(QStringLiteral("none")));
    toast.show(QStringLiteral("Short."));
    EXPECT_TRUE(toast.isVisible());
    const auto toastWindows = [] {
        std::vector<int> widths;
        for (const QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible() && window->title() == QLatin1String("Mivora"))
                widths.push_back(window->width());
        }
        return widths;
    };
    const std::vector<int> narrow = toastWindows();
    toast.show(QStringLiteral("Couldn't open Google Meet. Link copied."));
    const std::vector<int> wide = toastWindows();
    ASSERT_EQ(narrow.size(), 1U);
    ASSERT_EQ(wide.size(), 1U);
    EXPECT_GT(wide.front(), narrow.front());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !toast.isVisible(); }, 6000));
}

} // namespace kelo

#include "FloatingPanelControllerTests.moc"
