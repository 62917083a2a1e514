#include "FakeHost.h"
#include "FakeTray.h"
#include "KeloMenuBar/StatusItem.h"
#include "KeloMenuBar/backends/PopupMenu.h"
#include "support/FakeKeyboard.h"
#include "support/PrivateBus.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWheelEvent>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <optional>

using namespace kelo;

namespace {

PopupMenu *openPopup()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        auto *popup = qobject_cast<PopupMenu *>(window);
        if (popup && popup->isVisible())
            return popup;
    }
    return nullptr;
}

class TrayTest : public testing::Test
{
protected:
    TrayTest()
    {
        m_item.setIcon(QStringLiteral("calendar.badge.clock"), QStringLiteral("Mivora"));
        m_item.menuNeedsUpdate = [this](Menu &menu) {
            for (const char *title : {"one", "off", "two"})
                menu.addItem(QLatin1String(title), {}, [this, title] { m_chosen << QLatin1String(title); })
                    .isEnabled = title != std::string("off");
        };
    }

    support::PrivateBus m_bus;
    StatusItem m_item{QStringLiteral("app.kelo.Mivora"), m_bus.connection()};
    QStringList m_chosen;
};

} // namespace

TEST_F(TrayTest, isUsedWhereNoHostIsAndLeftWhenOneComes)
{
    std::optional<FakeTray> tray(std::in_place);
    EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); }));
    EXPECT_EQ(tray->wantedSize(), QSize(22, 22));
    {
        FakeHost host(m_bus);
        EXPECT_TRUE(waitFor([&] { return !host.registered.isEmpty() && !tray->icon(); }));
    }
    EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); })) << "the host has gone";
    tray.reset();
    tray.emplace();
    EXPECT_TRUE(waitFor([&] { return tray->showsIcon(); })) << "the tray was started again";
    m_item.setVisible(false);
    EXPECT_TRUE(waitFor([&] { return !tray->icon(); }));
}

TEST_F(TrayTest, isUsedWhileAWatcherHasNobodyToDrawItsItems)
{
    FakeTray tray;
    FakeHost host(m_bus, false);
    EXPECT_TRUE(waitFor([&] { return !host.registered.isEmpty() && tray.showsIcon(); }));
    host.setDraws(true);
    EXPECT_TRUE(waitFor([&] { return !tray.icon(); }));
    host.setDraws(false);
    EXPECT_TRUE(waitFor([&] { return tray.showsIcon(); }));
    EXPECT_EQ(host.registered.size(), 1) << "the registration holds all the while";
}

TEST_F(TrayTest, opensAMenuThatTheKeyboardReaches)
{
    FakeTray tray;
    ASSERT_TRUE(waitFor([&] { return tray.showsIcon(); }));
    support::FakeKeyboard keyboard;
    tray.click();
    ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
    // Down and down again: past the item that is off.
    for (int key : {KEY_DOWN, KEY_DOWN, KEY_ENTER})
        keyboard.tap({key});
    EXPECT_TRUE(waitFor([&] { return m_chosen == QStringList{QStringLiteral("two")}; }));
    EXPECT_FALSE(openPopup());

    tray.click();
    ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
    keyboard.tap({KEY_ESC});
    EXPECT_TRUE(waitFor([] { return openPopup() == nullptr; }));
    EXPECT_EQ(m_chosen.size(), 1);
}

TEST_F(TrayTest, drawsNoTextBeyondItsRow)
{
    m_item.menuNeedsUpdate = [](Menu &menu) {
        menu.addItem(QStringLiteral(" "), {}, {});
        menu.addItem(QLatin1Char('a') + QString(2000, QChar(u'\u0301')), {}, {});
    };
    FakeTray tray;
    ASSERT_TRUE(waitFor([&] { return tray.showsIcon(); }));
    tray.click();
    ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
    const auto isBlank = [&popup = *openPopup()](int index) {
        const QImage row = popup.screen()->grabWindow(popup.winId()).toImage().copy(popup.itemRect(index));
        QImage blank(row);
        blank.fill(row.pixelColor(1, 1));
        return row == blank;
    };
    EXPECT_TRUE(waitFor([&] { return !isBlank(1); }));
    EXPECT_TRUE(isBlank(0));
}

TEST_F(TrayTest, scrollsAMenuThatIsHigherThanTheScreen)
{
    constexpr int count = 5000;
    m_item.menuNeedsUpdate = [this](Menu &menu) {
        for (int i = 0; i < count; ++i)
            menu.addItem(QString::number(i), {}, [this, i] { m_chosen << QString::number(i); });
    };
    FakeTray tray;
    ASSERT_TRUE(waitFor([&] { return tray.showsIcon(); }));
    tray.click();
    ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
    PopupMenu &popup = *openPopup();
    const QRect inside(QPoint(), popup.size());
    EXPECT_TRUE(popup.screen()->availableGeometry().contains(popup.geometry()));
    EXPECT_TRUE(inside.contains(popup.itemRect(0)));
    EXPECT_FALSE(inside.intersects(popup.itemRect(count - 1)));

    const auto move = [&](QPoint point) {
        QMouseEvent event(QEvent::MouseMove, point, popup.mapToGlobal(point), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(&popup, &event);
    };
    const QPoint arrow(20, popup.height() - 5);
    move(arrow);
    EXPECT_EQ(popup.current(), -1) << "what the arrow covers can't be chosen";
    EXPECT_TRUE(waitFor([&] { return !inside.intersects(popup.itemRect(0)); }));
    move(popup.itemRect(20).center());
    EXPECT_EQ(popup.current(), 20);
    QWheelEvent turned(arrow, popup.mapToGlobal(arrow), {}, QPoint(0, 12000), Qt::NoButton, {}, {}, false);
    QCoreApplication::sendEvent(&popup, &turned);
    EXPECT_TRUE(inside.contains(popup.itemRect(0))) << "turned back to the beginning";

    support::FakeKeyboard keyboard;
    keyboard.tap({KEY_END});
    EXPECT_TRUE(waitFor([&] { return inside.contains(popup.itemRect(count - 1)); }));
    keyboard.tap({KEY_ENTER});
    EXPECT_TRUE(waitFor([&] { return m_chosen == QStringList{QString::number(count - 1)}; }));
}
