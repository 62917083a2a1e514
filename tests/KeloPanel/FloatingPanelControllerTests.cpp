#include "KeloPanel/FloatingPanelController.h"

#include "KeloPanel/ToastController.h"
#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
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

class EventRecorder final : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        types.push_back(event->type());
        return false;
    }

    std::vector<QEvent::Type> types;
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

    Text text;
    ViewLoader &views = mivora::sharedViews();
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
    Appearance appearance{QDBusConnection(QStringLiteral("none"))};
    ViewLoader unused(appearance);
    FloatingPanelController hidden(unused, {});
    hidden.onDidHide = [this] { calls.emplace_back("didHide"); };
    hidden.hide();
    EXPECT_FALSE(hidden.isVisible());
    EXPECT_FALSE(unused.isLoaded());
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
    // Filters run from the newest to the oldest: this one sees what the panel's own let through.
    EventRecorder recorder;
    QWindow *window = controller.panel().window();
    window->removeEventFilter(&controller.panel());
    window->installEventFilter(&recorder);
    window->installEventFilter(&controller.panel());
    controller.keyHandler = [this](const KeyEvent &event) {
        keys.push_back(event.nativeScanCode);
        return event.nativeScanCode == 36;
    };
    for (const quint32 scanCode : {36, 44}) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_unknown, Qt::NoModifier, scanCode, 0, 0);
            QCoreApplication::sendEvent(window, &event);
        }
    }
    EXPECT_THAT(recorder.types, ElementsAre(QEvent::KeyRelease, QEvent::KeyPress, QEvent::KeyRelease));
    EXPECT_THAT(keys, ElementsAre(36, 44));
}

TEST_F(FloatingPanelControllerTest, withoutTheViewsNothingIsShownAndNothingBreaks)
{
    const QByteArray before = qgetenv("MIVORA_VIEWS");
    qputenv("MIVORA_VIEWS", "/nonexistent/views.so");
    Appearance appearance{QDBusConnection(QStringLiteral("none"))};
    ViewLoader missing(appearance);
    FloatingPanelController panel(missing, {});
    EXPECT_FALSE(panel.orderFrontRegardless({}));
    panel.show();
    EXPECT_FALSE(panel.isVisible());
    panel.hide();
    before.isEmpty() ? qunsetenv("MIVORA_VIEWS") : qputenv("MIVORA_VIEWS", before);
}

TEST_F(FloatingPanelControllerTest, oneToastReplacesTheOtherAndGoes)
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
    EXPECT_TRUE(QTest::qWaitFor([&] { return !toast.isVisible(); }, 8000)) << "it goes by itself";
}

TEST_F(FloatingPanelControllerTest, theViewIsMadeAnewAfterItsRelease)
{
    mivora::KeptViews::window.reset();
    controller.orderFrontRegardless(QPointF(5, 6));
    const auto *window = qobject_cast<QQuickWindow *>(controller.panel().window());
    const QPointer<QQmlEngine> engine = qmlEngine(window->contentItem()->childItems().constFirst());
    ASSERT_TRUE(engine);
    controller.panel().releaseView();
    EXPECT_TRUE(controller.panel().window()) << "a visible panel keeps its view";
    controller.hide();
    controller.panel().releaseView();
    EXPECT_FALSE(controller.panel().window());
    EXPECT_FALSE(engine) << "it goes with the last window";
    EXPECT_TRUE(controller.orderFrontRegardless({}));
    EXPECT_EQ(controller.panel().window()->position(), QPoint(5, 6));
}

} // namespace kelo

#include "FloatingPanelControllerTests.moc"
