#include "KeloHotkey/HotKeyRecorder.h"

#include "KeloHotkey/backends/X11Keyboard.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeKeyboard.h"
#include "support/OtherClient.h"

#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace kelo;

namespace {

/// The recorder's window, which has the keyboard and counts what reaches it.
class KeyWindow final : public QWindow
{
public:
    KeyWindow()
    {
        resize(200, 100);
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this));
        takeFocus();
    }

    void takeFocus()
    {
        focus(static_cast<xcb_window_t>(winId()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return isActive(); }));
    }

    void loseFocus()
    {
        // Without any focus the server drops all keys, those of window managers as well.
        focus(xcb_setup_roots_iterator(xcb_get_setup(X11Keyboard::connection())).data->root);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !isActive(); }));
    }

    int presses = 0;

private:
    static void focus(xcb_window_t window)
    {
        xcb_set_input_focus(X11Keyboard::connection(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        xcb_flush(X11Keyboard::connection());
    }

    void keyPressEvent(QKeyEvent *) override { ++presses; }
};

constexpr HotKeyCombo commandShiftJ{38, commandKey | shiftKey};

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
        m_keyboard.tap(keys);
        QTest::qWait(60);
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
        {{KEY_LEFTMETA, KEY_C}, beeped},
        {{KEY_LEFTMETA, KEY_X}, beeped},
        {{KEY_LEFTMETA, KEY_Q}, beeped},
        {{KEY_LEFTMETA, KEY_W}, beeped},
        {{KEY_LEFTMETA, KEY_TAB}, beeped},
        {{KEY_LEFTMETA, KEY_SPACE}, beeped},
        {{KEY_MUTE}, beeped},
        {{KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V}, accepted, {9, commandKey | shiftKey}},
        {{KEY_LEFTCTRL, KEY_W}, accepted, {13, controlKey}},
        {{KEY_LEFTCTRL, KEY_LEFTALT, KEY_SPACE}, accepted, {49, controlKey | optionKey}},
        {{KEY_LEFTMETA, KEY_A}, accepted, {0, commandKey}},
        {{KEY_ESC}, cancelled},
        {{KEY_LEFTMETA, KEY_ESC}, cancelled},
    };

    for (const auto &row : rows) {
        const std::string keys = testing::PrintToString(std::vector<int>(row.keys));
        m_recorder.setCombo(before);
        m_chosen.clear();
        m_beeps = 0;
        m_recorder.toggle();
        tap(row.keys);
        EXPECT_EQ(m_recorder.isRecording(), row.outcome == beeped) << keys;
        EXPECT_EQ(m_beeps, row.outcome == beeped ? 1 : 0) << keys;
        EXPECT_EQ(m_recorder.combo(), row.outcome == accepted ? row.combo : before) << keys;
        EXPECT_EQ(m_chosen.size(), row.outcome == accepted ? 1u : 0u) << keys;
        EXPECT_EQ(m_window.presses, 0) << keys;
        m_recorder.stop();
    }
    tap({KEY_V});
    EXPECT_EQ(m_window.presses, 1) << "keys arrive again";
}

TEST_F(HotKeyRecorderTest, takesTheKeyboardFromTheWindowManagerAndFromShortcutsWhileItsWindowHasIt)
{
    // A window manager that closes windows by Alt and F4.
    support::OtherClient manager;
    ASSERT_TRUE(manager.grab(KEY_F4 + 8, XCB_MOD_MASK_1));
    tap({KEY_LEFTALT, KEY_F4});
    EXPECT_EQ(manager.presses(), 1) << "its own while nothing is recorded";
    m_recorder.toggle();
    EXPECT_TRUE(m_service.isSuspended());
    tap({KEY_V});
    EXPECT_TRUE(m_service.isSuspended());
    m_window.loseFocus();
    EXPECT_FALSE(m_service.isSuspended()) << "elsewhere the shortcut works";
    EXPECT_TRUE(m_recorder.isRecording());
    tap({KEY_LEFTALT, KEY_F4});
    EXPECT_EQ(manager.presses(), 1) << "the keyboard is elsewhere";
    m_window.takeFocus();
    EXPECT_TRUE(m_service.isSuspended());
    tap({KEY_LEFTALT, KEY_F4});
    EXPECT_EQ(m_chosen, (std::vector{HotKeyCombo{118, optionKey}}));
    EXPECT_EQ(manager.presses(), 0);
    tap({KEY_LEFTALT, KEY_F4});
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
    EXPECT_EQ(m_recorder.toolTip(), QStringLiteral("Press Esc to cancel"));
    m_recorder.toggle();
    m_recorder.reset();
    EXPECT_EQ(m_chosen, std::vector{commandShiftJ});
}

TEST_F(HotKeyRecorderTest, namesKeysAsTheKeyboardDoes)
{
    m_recorder.setCombo({12, commandKey | controlKey});
    EXPECT_EQ(m_recorder.keyCaps().join(u' '), QStringLiteral("⌃ ⌘ Q"));
    QSignalSpy keyCaps(&m_recorder, &HotKeyRecorder::keyCapsChanged);
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("fr")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !keyCaps.isEmpty(); }));
    EXPECT_EQ(m_recorder.keyCaps().last(), QStringLiteral("A"));
    m_recorder.toggle();
    tap({KEY_LEFTMETA, KEY_LEFTCTRL, KEY_A});
    EXPECT_EQ(m_recorder.combo(), (HotKeyCombo{0, commandKey | controlKey})) << "the key, not its letter";
    ASSERT_TRUE(m_keyboard.setLayout(QStringLiteral("us")));
}
