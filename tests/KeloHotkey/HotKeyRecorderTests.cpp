#include "KeloHotkey/HotKeyRecorder.h"

#include "Platform/linux/X11Connection.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeKeyboard.h"
#include "support/OtherClient.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace kelo;
using mivora::X11Connection;

namespace {

/// The recorder's window, which has the keyboard and notes what is typed into it.
class KeyWindow final : public QWindow
{
public:
    KeyWindow()
    {
        resize(200, 100);
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this));
        giveFocus(xcb_window_t(winId()));
    }

    void giveFocus(xcb_window_t window)
    {
        X11Connection().setInputFocus(window);
        EXPECT_TRUE(QTest::qWaitFor([&] { return isActive() == (window == winId()); }));
    }

    QString typed;

private:
    void keyPressEvent(QKeyEvent *event) override { typed += event->text(); }
};

constexpr HotKeyCombo commandShiftJ{38, commandKey | shiftKey};
constexpr std::initializer_list<int> altF4 = {KEY_LEFTALT, KEY_F4};

class HotKeyRecorderTest : public testing::Test
{
protected:
    HotKeyRecorderTest()
    {
        m_recorder.beep = [this] { ++m_beeps; };
        QObject::connect(&m_recorder, &HotKeyRecorder::comboChosen, &m_recorder,
                         [this](const HotKeyCombo &combo) { m_chosen.push_back(combo); });
    }

    void tap(std::initializer_list<int> keys)
    {
        // Until the server has done what it was asked before.
        X11Connection().inputFocus();
        m_keyboard.tap(keys);
    }

    FakeHotKeyService m_service;
    HotKeyRecorder m_recorder{m_service, commandShiftJ, commandShiftJ};
    KeyWindow m_window;
    support::FakeKeyboard m_keyboard;
    int m_beeps = 0;
    std::vector<HotKeyCombo> m_chosen;
};

} // namespace

TEST_F(HotKeyRecorderTest, judgesEveryKeyAndLetsNoneThrough)
{
    const HotKeyCombo before{11, controlKey};
    enum class Outcome { accepted, beeped, cancelled };
    using enum Outcome;

    const struct
    {
        std::initializer_list<int> keys;
        Outcome outcome;
        HotKeyCombo combo = {};
    } rows[] = {
        {{KEY_V}, beeped},
        {{KEY_LEFTSHIFT, KEY_V}, beeped},
        {{KEY_LEFTMETA, KEY_V}, beeped},
        {{KEY_LEFTMETA, KEY_Q}, beeped},
        {{KEY_LEFTMETA, KEY_SPACE}, beeped},
        {{KEY_MUTE}, beeped},
        {{KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V}, accepted, {9, commandKey | shiftKey}},
        {{KEY_LEFTCTRL, KEY_W}, accepted, {13, controlKey}},
        {{KEY_LEFTCTRL, KEY_LEFTALT, KEY_SPACE}, accepted, {49, controlKey | optionKey}},
        {{KEY_LEFTMETA, KEY_A}, accepted, {0, commandKey}},
        {{KEY_ESC}, cancelled},
        {{KEY_LEFTMETA, KEY_ESC}, cancelled},
    };

    const QShortcut closing(QKeySequence(QStringLiteral("Ctrl+W")), &m_window);
    QSignalSpy closed(&closing, &QShortcut::activated);
    for (const auto &row : rows) {
        const std::string keys = testing::PrintToString(std::vector<int>(row.keys));
        m_recorder.setCombo(before);
        m_chosen.clear();
        m_beeps = 0;
        m_recorder.toggle();
        tap(row.keys);
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_beeps > 0 || !m_recorder.isRecording(); })) << keys;
        EXPECT_EQ(m_recorder.isRecording(), row.outcome == beeped) << keys;
        EXPECT_EQ(m_recorder.combo(), row.outcome == accepted ? row.combo : before) << keys;
        EXPECT_EQ(m_chosen.size(), row.outcome == accepted ? 1u : 0u) << keys;
        m_recorder.stop();
    }
    tap({KEY_Z});
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.typed.endsWith(u'z'); })) << "keys arrive again";
    EXPECT_EQ(m_window.typed, QStringLiteral("z"));
    EXPECT_EQ(closed.count(), 0);
}

TEST_F(HotKeyRecorderTest, takesTheKeyboardFromTheWindowManagerAndFromShortcutsWhileItsWindowHasIt)
{
    // A window manager that closes windows by Alt and F4.
    support::OtherClient manager;
    ASSERT_TRUE(manager.grab(KEY_F4 + 8, XCB_MOD_MASK_1));
    m_recorder.toggle();
    EXPECT_TRUE(m_service.isSuspended());
    // Without any focus the server drops all keys, those of window managers as well.
    m_window.giveFocus(X11Connection().root());
    EXPECT_FALSE(m_service.isSuspended()) << "elsewhere the shortcut works";
    EXPECT_TRUE(m_recorder.isRecording());
    tap(altF4);
    EXPECT_EQ(manager.presses(), 1) << "the keyboard is elsewhere";
    m_window.giveFocus(xcb_window_t(m_window.winId()));
    EXPECT_TRUE(m_service.isSuspended());
    tap(altF4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_chosen == std::vector{HotKeyCombo{118, optionKey}}; }));
    EXPECT_EQ(manager.presses(), 0);
    tap(altF4);
    EXPECT_EQ(manager.presses(), 1) << "recording is over";
    EXPECT_EQ(m_service.suspensions, 2);
    EXPECT_EQ(m_service.resumptions, 2);
}

TEST_F(HotKeyRecorderTest, offersToGoBackToTheDefault)
{
    QSignalSpy canReset(&m_recorder, &HotKeyRecorder::canResetChanged);
    EXPECT_FALSE(m_recorder.canReset());
    m_recorder.setCombo({9, controlKey});
    EXPECT_TRUE(m_recorder.canReset());
    EXPECT_EQ(canReset.count(), 1);
    EXPECT_TRUE(m_chosen.empty()) << "nobody chose that";
    m_recorder.toggle();
    EXPECT_FALSE(m_recorder.canReset());
    m_recorder.reset();
    EXPECT_TRUE(m_chosen.empty()) << "while it records there is nothing to reset";
    m_recorder.toggle();
    m_recorder.reset();
    EXPECT_EQ(m_chosen, std::vector{commandShiftJ});
}

TEST_F(HotKeyRecorderTest, namesKeysAsTheKeyboardDoes)
{
    m_recorder.setCombo({12, commandKey | controlKey});
    QSignalSpy keyCaps(&m_recorder, &HotKeyRecorder::keyCapsChanged);
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("fr")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !keyCaps.isEmpty(); }));
    EXPECT_EQ(m_recorder.displayString(), QStringLiteral("⌃⌘A"));
    m_recorder.toggle();
    tap({KEY_LEFTMETA, KEY_LEFTCTRL, KEY_A});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_recorder.isRecording(); }));
    EXPECT_EQ(m_recorder.combo(), (HotKeyCombo{0, commandKey | controlKey})) << "the key, not its letter";
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("us")));
}
