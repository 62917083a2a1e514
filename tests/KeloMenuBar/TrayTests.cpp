#include "FakeHost.h"
#include "FakeTray.h"
#include "KeloMenuBar/StatusItem.h"
#include "support/AccessibleView.h"
#include "support/FakeKeyboard.h"
#include "support/KeptViews.h"
#include "support/PrivateBus.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
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

class TrayTest : public testing::Test
{
protected:
    TrayTest()
    {
        m_item.setState({.icon = QStringLiteral("calendar.badge.clock")});
        m_item.menuNeedsUpdate = [this](Menu &menu) {
            for (const char *title : {"one", "off", "two"})
                menu.addItem(QLatin1String(title), QLatin1String(title, 1),
                             [this, title] { m_chosen << QLatin1String(title); })
                    .isEnabled = title != std::string("off");
        };
    }

    void openMenu()
    {
        if (!m_tray)
            m_tray.emplace();
        ASSERT_TRUE(waitFor([&] { return m_tray->showsIcon(); }));
        m_tray->click();
        ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
    }

    support::PrivateBus m_bus;
    std::optional<FakeTray> m_tray;
    StatusItem m_item{QStringLiteral("app.kelo.Mivora"), mivora::sharedViews(), m_bus.connection()};
    QStringList m_chosen;
};

} // namespace

TEST_F(TrayTest, isUsedWhileNobodyElseDrawsTheItem)
{
    std::optional<FakeTray> tray(std::in_place);
    EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); }));
    EXPECT_EQ(tray->wantedSize(), QSize(22, 22));
    {
        FakeHost host(m_bus, false);
        EXPECT_TRUE(waitFor([&] { return !host.registered.isEmpty() && tray->showsIcon(); }));
        host.setDraws(true);
        EXPECT_TRUE(waitFor([&] { return !tray->icon(); }));
        host.setDraws(false);
        EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); }));
        host.setDraws(true);
        EXPECT_TRUE(waitFor([&] { return !tray->icon(); }));
        EXPECT_EQ(host.registered.size(), 1) << "the registration holds all the while";
    }
    EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); })) << "the host has gone";
    tray.reset();
    tray.emplace();
    EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); })) << "the tray was started again";
    m_item.setState({.isVisible = false});
    EXPECT_TRUE(waitFor([&] { return !tray->icon(); }));
}

TEST_F(TrayTest, opensAMenuThatTheKeyboardReaches)
{
    support::FakeKeyboard keyboard;
    openMenu();
    // Down and down again: past the item that is off.
    for (int key : {KEY_DOWN, KEY_DOWN, KEY_ENTER})
        keyboard.tap({key});
    EXPECT_TRUE(waitFor([&] { return m_chosen == QStringList{QStringLiteral("two")}; }));
    EXPECT_FALSE(openPopup());

    openMenu();
    keyboard.tap({KEY_ESC});
    EXPECT_TRUE(waitFor([] { return openPopup() == nullptr; }));
    EXPECT_EQ(m_chosen.size(), 1);

    openMenu();
    keyboard.tap({KEY_O});
    keyboard.tap({KEY_LEFTCTRL, KEY_O});
    EXPECT_TRUE(waitFor([&] { return m_chosen.size() == 2; }));
    EXPECT_EQ(m_chosen.last(), QLatin1String("one"));
    EXPECT_FALSE(openPopup());
}

TEST_F(TrayTest, opensAMenuThatTheMouseReaches)
{
    QAccessible::setActive(true);
    openMenu();
    const support::AccessibleView view(*openPopup());
    EXPECT_TRUE(waitFor(
        [&] { return view.names(QAccessible::MenuItem).join(u' ') == QLatin1String("one off two"); }));
    EXPECT_TRUE(view.click(QAccessible::MenuItem, QStringLiteral("off")));
    ASSERT_TRUE(openPopup());
    EXPECT_TRUE(view.click(QAccessible::MenuItem, QStringLiteral("two")));
    EXPECT_FALSE(openPopup());

    // The button that opened the menu is held until it is over an item.
    openMenu();
    QWindow &popup = *openPopup();
    const QPoint first(popup.width() / 2, 18);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
    QTest::qWait(20);
    QMouseEvent dragged(QEvent::MouseMove, first, popup.mapToGlobal(first), Qt::NoButton, Qt::LeftButton, {});
    QMouseEvent released(QEvent::MouseButtonRelease, first, popup.mapToGlobal(first), Qt::LeftButton, {}, {});
    QCoreApplication::sendEvent(&popup, &dragged);
    QCoreApplication::processEvents();
    QCoreApplication::sendEvent(&popup, &released);
    EXPECT_EQ(m_chosen.join(u' '), QStringLiteral("two one"));

    openMenu();
    QTest::mousePress(openPopup(), Qt::LeftButton, {}, QPoint(-5, 5));
    EXPECT_FALSE(openPopup()) << "a click elsewhere closes it";
    EXPECT_EQ(m_chosen.size(), 2);
}

TEST_F(TrayTest, scrollsAMenuThatIsHigherThanTheScreen)
{
    constexpr int count = 2000;
    m_item.menuNeedsUpdate = [this](Menu &menu) {
        for (int i = 0; i < count; ++i)
            menu.addItem(QString::number(i), {}, [this, i] { m_chosen << QString::number(i); });
    };
    openMenu();
    EXPECT_TRUE(openPopup()->screen()->availableGeometry().contains(openPopup()->geometry()));
    support::FakeKeyboard keyboard;
    keyboard.tap({KEY_UP});
    const QString last = QString::number(count - 1);
    EXPECT_TRUE(waitFor([&] { return support::AccessibleView(*openPopup()).focused() == last; }));
    keyboard.tap({KEY_ENTER});
    EXPECT_TRUE(waitFor([&] { return m_chosen == QStringList{last}; }));
}
