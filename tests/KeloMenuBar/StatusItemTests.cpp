#include "FakeHost.h"
#include "FakeTray.h"
#include "KeloMenuBar/MenuWindow.h"
#include "KeloMenuBar/StatusItemController.h"
#include "Platform/Activation.h"
#include "support/AccessibleView.h"
#include "support/FakeKeyboard.h"
#include "support/KeptViews.h"

#include <QFile>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <optional>

using namespace kelo;

namespace {

QWindow *openPopup()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->type() == Qt::Popup && window->isVisible())
            return window;
    }
    return nullptr;
}

class StatusItemTest : public testing::Test
{
protected:
    ~StatusItemTest() override { qunsetenv("MIVORA_TRAY"); }

    void openMenu(bool isHeld = false)
    {
        if (!m_tray)
            m_tray.emplace();
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_tray->showsIcon(); }));
        QTest::mousePress(m_tray->icon(), Qt::LeftButton);
        if (!isHeld)
            QTest::mouseRelease(m_tray->icon(), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([] { return openPopup() != nullptr; }));
    }

    // Whether these were chosen; the menu is closed then.
    bool isChosen(const char *titles)
    {
        return QTest::qWaitFor([&] { return m_chosen.join(u' ') == QLatin1String(titles) && !openPopup(); });
    }

    Menu menu()
    {
        Menu menu;
        for (const QString &title : m_titles)
            menu.addItem(title, title.first(1), [this, title] { choose(title); }).isEnabled =
                title != QLatin1String("off");
        return menu;
    }

    void choose(const QString &title)
    {
        m_chosen << title;
        m_launchToken = mivora::takeLaunchToken();
    }

    /// A host of this presentation that shows the item.
    FakeHost &host(const char *presentation)
    {
        qputenv("MIVORA_TRAY", presentation);
        m_host.emplace(m_bus);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !m_host->registered.isEmpty(); }));
        return *m_host;
    }

    support::PrivateBus m_bus;
    std::optional<FakeTray> m_tray;
    std::optional<FakeHost> m_host;
    QStringList m_chosen;
    QByteArray m_launchToken;
    QStringList m_titles{QStringLiteral("one"), QStringLiteral("off"), QStringLiteral("two")};
    StatusItemController m_item{QStringLiteral("calendar.badge.clock"),
                                QStringLiteral("Mivora"),
                                [this](Menu &menu) { menu = this->menu(); },
                                QStringLiteral("app.kelo.Mivora"),
                                mivora::sharedViews(),
                                m_bus.connection()};
};

} // namespace

TEST_F(StatusItemTest, isInTheTrayWhileNobodyElseDrawsIt)
{
    const auto isInTray = [this](bool wanted) {
        return QTest::qWaitFor([&] { return m_tray->showsIcon() == wanted && !m_tray->icon() != wanted; });
    };
    m_tray.emplace();
    EXPECT_TRUE(isInTray(true));
    const auto hints =
        mivora::X11Connection().values(xcb_window_t(m_tray->icon()->winId()), "WM_NORMAL_HINTS");
    EXPECT_EQ(hints.at(5) + hints.at(6), 44U) << "the room that it asks for";
    m_host.emplace(m_bus, false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_host->registered.isEmpty(); }) && isInTray(true));
    for (const bool draws : {true, false, true}) {
        m_host->setDraws(draws);
        EXPECT_TRUE(isInTray(!draws));
    }
    EXPECT_EQ(m_host->registered.size(), 1) << "the registration holds all the while";
    m_host.reset();
    EXPECT_TRUE(isInTray(true)) << "the host has gone";
    m_tray.reset();
    m_tray.emplace();
    EXPECT_TRUE(isInTray(true)) << "the tray was started again";
    for (const bool isVisible : {false, true}) {
        m_item.setVisible(isVisible);
        EXPECT_TRUE(isInTray(isVisible));
    }
}

TEST_F(StatusItemTest, hasAMenuThatTheKeyboardReaches)
{

    const struct
    {
        const char *name;
        std::vector<int> keys;
        const char *chosen;
    } rows[] = {
        {"past the item that is off", {KEY_DOWN, KEY_DOWN, KEY_ENTER}, "two"},
        {"round the end", {KEY_DOWN, KEY_UP, KEY_ENTER}, "two"},
        {"from the end", {KEY_UP, KEY_DOWN, KEY_SPACE}, "one"},
        {"to the end and back", {KEY_END, KEY_HOME, KEY_ENTER}, "one"},
        {"to the end", {KEY_HOME, KEY_END, KEY_KPENTER}, "two"},
        {"nothing to be chosen, and away", {KEY_ENTER, KEY_O, KEY_DOWN, KEY_ESC}, ""},
    };

    for (const auto &row : rows) {
        m_chosen.clear();
        openMenu();
        for (const int key : row.keys)
            support::tap({key});
        EXPECT_TRUE(isChosen(row.chosen)) << row.name << ": " << m_chosen.join(u' ').toStdString();
    }
    for (const auto &[key, chosen] : {std::pair(KEY_T, "two"), {KEY_O, "two one"}}) {
        openMenu();
        support::tap({KEY_LEFTCTRL, key});
        EXPECT_TRUE(isChosen(chosen)) << "by its key equivalent";
    }
    m_titles.resize(2000, QStringLiteral("filler"));
    m_titles << QStringLiteral("last");
    openMenu();
    EXPECT_TRUE(openPopup()->screen()->availableGeometry().contains(openPopup()->geometry()));
    support::tap({KEY_UP});
    const support::AccessibleView view(*openPopup());
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.focused() == QLatin1String("last"); })) << "it scrolls";
    support::tap({KEY_ENTER});
    EXPECT_TRUE(isChosen("two one last"));
}

TEST_F(StatusItemTest, hasAMenuThatTheMouseReaches)
{
    QAccessible::setActive(true);
    openMenu();
    const support::AccessibleView view(*openPopup());
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return view.names(QAccessible::MenuItem).join(u' ') == QLatin1String("one off two"); }));
    EXPECT_TRUE(view.click(QAccessible::MenuItem, QStringLiteral("off")));
    EXPECT_TRUE(view.click(QAccessible::MenuItem, QStringLiteral("two")));
    EXPECT_TRUE(isChosen("two"));

    // The button that opened the menu is held until it is over an item.
    openMenu(true);
    QWindow &popup = *openPopup();
    const QPoint first(popup.width() / 2, 18);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
    QMouseEvent released(QEvent::MouseButtonRelease, first, popup.mapToGlobal(first), Qt::LeftButton, {}, {});
    for (const QPoint &point : {QPoint(first.x(), popup.height() - 18), first}) {
        QMouseEvent dragged(QEvent::MouseMove, point, popup.mapToGlobal(point), {}, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&popup, &dragged);
        QCoreApplication::processEvents();
    }
    QCoreApplication::sendEvent(&popup, &released);
    EXPECT_TRUE(isChosen("two one"));

    openMenu();
    const QPointF outside(-5, 5);
    QMouseEvent pressed(QEvent::MouseButtonPress, outside, openPopup()->mapToGlobal(outside), Qt::LeftButton,
                        Qt::LeftButton, {});
    QCoreApplication::sendEvent(openPopup(), &pressed);
    EXPECT_TRUE(isChosen("two one")) << "a click elsewhere closes it";
}

TEST_F(StatusItemTest, hasAMenuForTheHostToDraw)
{
    FakeHost &host = this->host("label");
    host.menu("AboutToShow", {0});
    const QDBusMessage layout = host.menu("GetLayout", {0, -1, QStringList()});
    const DBusMenuLayout item = qdbus_cast<DBusMenuLayout>(layout.arguments().value(1)).children[0];
    const auto events = QVariant::fromValue(
        QList<DBusMenuEvent>{{12345, QStringLiteral("clicked"), QDBusVariant(QString()), 0}});
    const QDBusMessage reply = host.menu("EventGroup", {events});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{12345});
    const auto click = [&] {
        host.menu("Event",
                  {item.id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 77U});
    };
    host.item("ProvideXdgActivationToken", {QStringLiteral("token")});
    click();
    EXPECT_TRUE(isChosen("one"));
    EXPECT_EQ(m_launchToken, "token");
    click();
    EXPECT_TRUE(isChosen("one one"));
    EXPECT_TRUE(m_launchToken.endsWith("_TIME77")) << m_launchToken.constData();
    host.item("Activate", {10, 10});
    ASSERT_TRUE(openPopup()) << "for hosts that draw none";
    EXPECT_EQ(openPopup()->geometry(), QRect(10, 10, 160, 88));
    host.item("ContextMenu", {1279, 799});
    EXPECT_EQ(openPopup()->geometry(), QRect(1120, 711, 160, 88));
    QTest::keyClick(openPopup(), Qt::Key_Escape);
}

TEST_F(StatusItemTest, isAnIconOfAnotherKindForPanelsThatDrawATextBesideThose)
{
    constexpr const char *path = "/org/x/StatusIcon/Icon";
    FakeHost &host = m_host.emplace(m_bus);
    host.setMonitor(true);
    const auto property = [&](const char *name) {
        return host.icon(path, "org.freedesktop.DBus.Properties", "Get", {QString(), QLatin1String(name)})
            .value<QDBusVariant>()
            .variant();
    };
    m_item.setState({.title = QStringLiteral("R&D · 2m"), .toolTip = QStringLiteral("R&D")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return property("Label") == QStringLiteral("R&D · 2m"); }));
    EXPECT_EQ(property("TooltipText"), QStringLiteral("R&amp;D"));
    const QVariant objects =
        host.icon("/org/x/StatusIcon", "org.freedesktop.DBus.ObjectManager", "GetManagedObjects", {});
    EXPECT_EQ(objects.value<QDBusArgument>().currentSignature(), QStringLiteral("a{oa{sa{sv}}}"));
    host.icon(path, "org.x.StatusIcon", "ButtonPress", {10, 10, 1U, 77U, 0});
    ASSERT_TRUE(openPopup());
    QTest::keyClick(openPopup(), Qt::Key_Escape);
    host.setMonitor(false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !host.registered.isEmpty(); })) << "as everywhere else again";
    host.setMonitor(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.property("Status") == QStringLiteral("Passive"); }));
}

TEST_F(StatusItemTest, announcesItsLabelOnceMoreToAHostThatHasReadIt)
{
    FakeHost &host = this->host("label");
    m_item.setState({.title = QStringLiteral("Review")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.property("XAyatanaLabel") == QStringLiteral("Review"); }));
    host.signalNames.clear();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return host.signalNames.contains(QLatin1String("XAyatanaNewLabel")); }));
}

TEST_F(StatusItemTest, announcesOnlyWhatHasChanged)
{
    FakeHost &host = this->host("label");
    StatusItemState state = m_item.state();
    const auto saysOf = [&](auto StatusItemState::*member, const auto &...values) {
        host.signalNames.clear();
        ((state.*member = values, m_item.setState(state)), ...);
        QCoreApplication::processEvents();
        // Answered after all signals.
        host.property("Title");
        return host.signalNames.join(u' ').toStdString();
    };
    EXPECT_EQ(saysOf(&StatusItemState::isUrgent, true, false), "") << "there and back";
    EXPECT_EQ(saysOf(&StatusItemState::isUrgent, true), "NewIcon");
    const QString icons =
        host.property("IconThemePath").toString() + QStringLiteral("/hicolor/scalable/status/");
    EXPECT_TRUE(QFile::exists(icons + host.property("IconName").toString() + QStringLiteral(".svg")));
    EXPECT_EQ(saysOf(&StatusItemState::title, QStringLiteral("Review · 2m")), "NewTitle XAyatanaNewLabel");
    EXPECT_EQ(saysOf(&StatusItemState::countdown, QStringLiteral("2m")), "") << "a label doesn't show it";
    EXPECT_EQ(saysOf(&StatusItemState::toolTip, QStringLiteral("Access?")), "NewToolTip");
    EXPECT_EQ(saysOf(&StatusItemState::isVisible, false), "NewStatus");
    EXPECT_EQ(host.property("Status"), QStringLiteral("Passive"));
}

TEST_F(StatusItemTest, givesPicturesInNetworkByteOrder)
{
    m_item.setState({.title = QStringLiteral("Review · 2m")});
    const auto pixmaps = qdbus_cast<QList<NotifierPixmap>>(host("wide").property("IconPixmap"));
    ASSERT_EQ(pixmaps.size(), 2);
    for (const NotifierPixmap &pixmap : pixmaps) {
        EXPECT_GT(pixmap.width, 3 * pixmap.height);
        // The middle of the left edge is plate: opaque and dark, alpha first.
        const QByteArray pixel = pixmap.bytes.mid(qsizetype(pixmap.height / 2) * pixmap.width * 4, 4);
        EXPECT_EQ(pixel.toHex(), "ff1c1c1e");
    }
}

TEST_F(StatusItemTest, hasItsMenuInAWindowToo)
{
    QAccessible::setActive(true);
    MenuWindow today(mivora::sharedViews(), QStringLiteral("Today"), [this] { return menu(); });
    ASSERT_TRUE(today.show());
    const support::AccessibleView view(*today.window());
    const auto shows = [&](const char *names, const char *focused) {
        return QTest::qWaitFor([&] {
            return view.names(QAccessible::MenuItem).join(u' ') == QLatin1String(names) &&
                   view.focused() == QLatin1String(focused);
        });
    };
    EXPECT_TRUE(shows("one off two", "one"));
    QTest::keyClick(today.window(), Qt::Key_Down);
    EXPECT_TRUE(shows("one off two", "off")) << "what can't be chosen is read as well";
    QTest::keyClick(today.window(), Qt::Key_Return);
    const QSize before = today.window()->size();
    m_titles.prepend(QStringLiteral("new"));
    today.update();
    EXPECT_TRUE(shows("new one off two", "off")) << "it stays where it is";
    EXPECT_GT(today.window()->height(), before.height());
    QTest::keyClick(today.window(), Qt::Key_Down);
    QTest::keyClick(today.window(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !today.window(); }));
    today.show();
    QTest::keyClick(today.window(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !today.window(); }));
    today.show();
    QTest::keyClick(today.window(), Qt::Key_Return);
    EXPECT_EQ(m_chosen.join(u' '), QStringLiteral("two new"));
}
