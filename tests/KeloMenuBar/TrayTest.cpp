#include "FakeHost.h"
#include "FakeTray.h"
#include "KeloMenuBar/StatusItem.h"
#include "KeloMenuBar/backends/PopupMenu.h"
#include "support/FakeKeyboard.h"
#include "support/PrivateBus.h"

#include <QGuiApplication>
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
                menu.addItem(QLatin1String(title), QLatin1String(title, 1),
                             [this, title] { m_chosen << QLatin1String(title); })
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

    tray.click();
    ASSERT_TRUE(waitFor([] { return openPopup() != nullptr; }));
    keyboard.tap({KEY_O});
    keyboard.tap({KEY_LEFTCTRL, KEY_O});
    EXPECT_TRUE(waitFor([&] { return m_chosen.size() == 2; }));
    EXPECT_EQ(m_chosen.last(), QLatin1String("one"));
    EXPECT_FALSE(openPopup());
}
