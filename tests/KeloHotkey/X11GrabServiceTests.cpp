#include "KeloHotkey/backends/X11GrabService.h"

#include "KeloHotkey/HotKey.h"
#include "support/FakeKeyboard.h"
#include "support/OtherClient.h"

#include <QCoreApplication>
#include <QProcess>
#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace kelo;
using support::OtherClient;
using support::tap;

namespace {

constexpr xcb_keycode_t xKeyV = KEY_V + 8;
constexpr std::uint16_t shiftAndSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
constexpr std::initializer_list<int> shiftSuperV = {KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V};

} // namespace

class X11GrabServiceTest : public testing::Test
{
protected:
    ~X11GrabServiceTest() override { EXPECT_TRUE(support::setLayout(QStringLiteral("us"))); }

    std::unique_ptr<HotKey> create(const HotKeyCombo &combo = HotKeyCombo::defaultCombo)
    {
        return HotKey::create(m_service, combo, [this] { ++m_runs; });
    }

    // How often the action has run on account of these keys. Those of another shortcut are the last to
    // arrive.
    int runsAfter(std::initializer_list<int> keys)
    {
        tap(keys);
        tap({KEY_LEFTCTRL, KEY_F1});
        EXPECT_TRUE(QTest::qWaitFor([&] { return std::exchange(m_hasAnswered, false); }));
        return std::exchange(m_runs, 0);
    }

    X11GrabService m_service;
    int m_runs = 0;
    bool m_hasAnswered = false;
    std::unique_ptr<HotKey> m_last =
        HotKey::create(m_service, {122, controlKey}, [this] { m_hasAnswered = true; });
};

TEST_F(X11GrabServiceTest, firesForExactlyItsCombinationWhateverTheLocksAndTheLayout)
{
    const auto hotKey = create();
    for (const int lock : {KEY_CAPSLOCK, KEY_NUMLOCK, KEY_CAPSLOCK, KEY_NUMLOCK}) {
        EXPECT_EQ(runsAfter(shiftSuperV), 1) << lock;
        tap({lock});
    }
    ASSERT_TRUE(support::setLayout(QStringLiteral("us,ru")));
    tap({support::layoutKey});
    EXPECT_EQ(runsAfter(shiftSuperV), 1) << "Russian";
    EXPECT_EQ(runsAfter({KEY_LEFTMETA, KEY_V}), 0);
    EXPECT_EQ(runsAfter({KEY_LEFTCTRL, KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V}), 0);
    EXPECT_EQ(runsAfter({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_B}), 0);
    const auto other = create({126, controlKey | optionKey});
    EXPECT_EQ(runsAfter({KEY_RIGHTCTRL, KEY_LEFTALT, KEY_UP}), 1);
}

TEST_F(X11GrabServiceTest, firesOnceWhileTheKeyIsHeld)
{
    const auto hotKey = create();
    xcb_key_press_event_t event{};
    event.detail = xKeyV;
    event.event = mivora::X11Connection().root();
    event.state = shiftAndSuper;
    // The third and the fourth are what most servers make of a key that is held.
    for (const auto &[type, time, runs] : {std::tuple(XCB_KEY_PRESS, 1, 1),
                                           {XCB_KEY_PRESS, 2, 1},
                                           {XCB_KEY_RELEASE, 3, 1},
                                           {XCB_KEY_PRESS, 3, 1},
                                           {XCB_KEY_RELEASE, 4, 1},
                                           {XCB_KEY_PRESS, 5, 2}}) {
        event.response_type = std::uint8_t(type);
        event.time = xcb_timestamp_t(time);
        m_service.nativeEventFilter({}, &event, nullptr);
        QCoreApplication::processEvents();
        EXPECT_EQ(m_runs, runs) << type << " at " << time;
    }
}

TEST_F(X11GrabServiceTest, holdsWhatNobodyElseHoldsAndLeavesNothingBehind)
{
    const std::uint16_t locks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
    for (const std::uint16_t lock : locks) {
        OtherClient holder;
        ASSERT_TRUE(holder.grab(xKeyV, shiftAndSuper | lock));
        EXPECT_FALSE(create()) << lock;
        OtherClient third;
        for (const std::uint16_t other : locks)
            EXPECT_EQ(third.grab(xKeyV, shiftAndSuper | other), other != lock) << "left over: " << other;
    }
    auto hotKey = create();
    EXPECT_FALSE(create()) << "it is held once in this program as well";
    hotKey.reset();
    EXPECT_EQ(runsAfter(shiftSuperV), 0);
    OtherClient other;
    for (const std::uint16_t lock : locks)
        EXPECT_TRUE(other.grab(xKeyV, shiftAndSuper | lock)) << "left over: " << lock;
    EXPECT_FALSE(create({63, commandKey})) << "no key of an X server";
}

TEST_F(X11GrabServiceTest, letsTheKeysThroughWhileSuspendedAndGetsThemBack)
{
    const auto hotKey = create();
    m_service.suspend();
    const auto recorded = create({11, controlKey});
    ASSERT_TRUE(recorded);
    tap(shiftSuperV);
    tap({KEY_LEFTCTRL, KEY_B});
    {
        OtherClient other;
        EXPECT_TRUE(other.grab(KEY_B + 8, XCB_MOD_MASK_CONTROL));
        m_service.resume();
        EXPECT_EQ(m_service.state(), (HotKeyState{HotKeyState::Kind::taken, QStringLiteral("Ctrl+B")}));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] {
        m_service.retry();
        return m_service.state().kind == HotKeyState::Kind::registered;
    })) << "it is free again";
    EXPECT_EQ(runsAfter(shiftSuperV), 1);
    EXPECT_EQ(runsAfter({KEY_LEFTCTRL, KEY_B}), 1);
}

TEST_F(X11GrabServiceTest, followsNumLockToAnotherModifier)
{
    const auto hotKey = create();
    ASSERT_EQ(QProcess::execute(QStringLiteral("xmodmap"),
                                {QStringLiteral("-e"), QStringLiteral("clear mod2"), QStringLiteral("-e"),
                                 QStringLiteral("add mod3 = Num_Lock")}),
              0);
    EXPECT_TRUE(QTest::qWaitFor([] { return OtherClient().grab(xKeyV, shiftAndSuper | XCB_MOD_MASK_2); }));
    tap({KEY_NUMLOCK});
    EXPECT_EQ(runsAfter(shiftSuperV), 1);
    tap({KEY_NUMLOCK});
}
