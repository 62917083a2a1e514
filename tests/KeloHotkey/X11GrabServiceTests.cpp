#include "KeloHotkey/backends/X11GrabService.h"

#include "KeloHotkey/HotKey.h"
#include "XkbLayoutSwitch.h"
#include "support/FakeKeyboard.h"
#include "support/OtherClient.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QProcess>
#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace kelo;
using support::OtherClient;

namespace {

constexpr xcb_keycode_t xKeyV = KEY_V + 8;
constexpr std::uint16_t shiftAndSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;

/// Counts the presses of V that the server really sends, repeats included.
class PressCounter final : public QAbstractNativeEventFilter
{
public:
    PressCounter() { QCoreApplication::instance()->installNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_key_press_event_t *>(message);
        count += (event->response_type & 0x7f) == XCB_KEY_PRESS && event->detail == xKeyV;
        return false;
    }

    int count = 0;
};

class X11GrabServiceTest : public testing::Test
{
protected:
    std::unique_ptr<HotKey> create(const HotKeyCombo &combo = HotKeyCombo::defaultCombo)
    {
        return HotKey::create(m_service, combo, [this] { ++m_runs; });
    }

    // How often the action runs on account of the keys.
    int runsAfter(std::initializer_list<int> keys)
    {
        const int before = m_runs;
        m_keyboard.tap(keys);
        QTest::qWait(100);
        return m_runs - before;
    }

    X11GrabService m_service{X11Keyboard::connection()};
    support::FakeKeyboard m_keyboard;
    int m_runs = 0;
};

constexpr std::initializer_list<int> shiftSuperV = {KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V};

} // namespace

TEST_F(X11GrabServiceTest, firesWhateverTheLocksAndTheLayout)
{
    const auto hotKey = create();
    ASSERT_TRUE(hotKey);
    EXPECT_EQ(runsAfter(shiftSuperV), 1) << "no lock";
    m_keyboard.tap({KEY_CAPSLOCK});
    EXPECT_EQ(runsAfter(shiftSuperV), 1) << "Caps Lock";
    m_keyboard.tap({KEY_NUMLOCK});
    EXPECT_EQ(runsAfter(shiftSuperV), 1) << "both locks";
    m_keyboard.tap({KEY_CAPSLOCK});
    EXPECT_EQ(runsAfter(shiftSuperV), 1) << "Num Lock";
    m_keyboard.tap({KEY_NUMLOCK});
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("us,ru")));
    lockLayout(X11Keyboard::connection(), 1);
    EXPECT_EQ(runsAfter(shiftSuperV), 1) << "Russian";
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("us")));
}

TEST_F(X11GrabServiceTest, firesForExactlyItsCombination)
{
    const auto hotKey = create();
    ASSERT_TRUE(hotKey);
    EXPECT_EQ(runsAfter({KEY_V}), 0);
    EXPECT_EQ(runsAfter({KEY_LEFTMETA, KEY_V}), 0);
    EXPECT_EQ(runsAfter({KEY_LEFTCTRL, KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V}), 0);
    EXPECT_EQ(runsAfter({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_B}), 0);
    const auto other = create({126, controlKey | optionKey});
    ASSERT_TRUE(other);
    EXPECT_EQ(runsAfter({KEY_RIGHTCTRL, KEY_LEFTALT, KEY_UP}), 1);
}

TEST_F(X11GrabServiceTest, firesOnceWhileTheKeyIsHeld)
{
    const auto hotKey = create();
    PressCounter presses;
    for (const int key : shiftSuperV)
        m_keyboard.press(key);
    ASSERT_TRUE(QTest::qWaitFor([&] { return presses.count > 3; })) << "the server does not repeat keys";
    m_keyboard.release(KEY_V);
    QTest::qWait(50);
    EXPECT_EQ(m_runs, 1);
    EXPECT_EQ(runsAfter({KEY_V}), 1) << "a second press with the modifiers still held";
}

TEST_F(X11GrabServiceTest, refusesWhatAnotherProgramHolds)
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
}

TEST_F(X11GrabServiceTest, holdsACombinationOnceUntilItIsReleasedAndNoKeysThatDoNotExist)
{
    auto hotKey = create();
    EXPECT_FALSE(create());
    EXPECT_EQ(runsAfter(shiftSuperV), 1);
    OtherClient other;
    EXPECT_FALSE(other.grab(xKeyV, shiftAndSuper));
    hotKey.reset();
    for (const std::uint16_t lock : {0, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2})
        EXPECT_TRUE(other.grab(xKeyV, std::uint16_t(shiftAndSuper | lock))) << "left over: " << lock;
    for (const std::uint32_t keyCode : {52u, 63u, 128u, 400u, 65535u, 0xffffffffu})
        EXPECT_FALSE(create({keyCode, commandKey})) << keyCode;
}

TEST_F(X11GrabServiceTest, letsTheKeysThroughWhileSuspended)
{
    const auto hotKey = create();
    m_service.suspend();
    EXPECT_EQ(runsAfter(shiftSuperV), 0);
    EXPECT_TRUE(OtherClient().grab(xKeyV, shiftAndSuper));
    const auto recorded = create({11, controlKey});
    ASSERT_TRUE(recorded);
    EXPECT_EQ(runsAfter({KEY_LEFTCTRL, KEY_B}), 0);
    m_service.resume();
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
    QTest::qWait(200);
    m_keyboard.tap({KEY_NUMLOCK});
    EXPECT_EQ(runsAfter(shiftSuperV), 1);
    m_keyboard.tap({KEY_NUMLOCK});
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("us")));
}
