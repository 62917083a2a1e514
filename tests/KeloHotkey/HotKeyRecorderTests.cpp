#include "KeloHotkey/HotKeyRecorder.h"

#include "KeloHotkey/KeyboardLayout.h"
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
using support::tap;

namespace {

/// The recorder's window, which has the keyboard and notes what is typed into it.
class KeyWindow final : public QWindow
{
public:
    KeyWindow()
    {
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
        m_recorder.beep = [this] { m_outcome = QStringLiteral("beep"); };
        QObject::connect(&m_recorder, &HotKeyRecorder::comboChosen, &m_recorder,
                         [this](const HotKeyCombo &combo) { m_outcome = combo.displayString(); });
    }

    FakeHotKeyService m_service;
    HotKeyRecorder m_recorder{m_service, commandShiftJ, commandShiftJ};
    KeyWindow m_window;
    // Of what was typed last: "beep", or the combination that was chosen.
    QString m_outcome;
};

} // namespace

TEST_F(HotKeyRecorderTest, judgesEveryKeyAndLetsNoneThrough)
{
    const struct
    {
        std::initializer_list<int> keys;
        const char *outcome;
    } rows[] = {
        {{KEY_V}, "beep"},
        {{KEY_LEFTSHIFT, KEY_V}, "beep"},
        {{KEY_LEFTMETA, KEY_V}, "beep"},
        {{KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V}, "⇧⌘V"},
        {{KEY_LEFTCTRL, KEY_W}, "beep"},
        {{KEY_LEFTCTRL, KEY_HOME}, "beep"},
        {{KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_W}, "⌃⇧W"},
        {{KEY_ESC}, "cancelled"},
        {{KEY_LEFTMETA, KEY_ESC}, "cancelled"},
    };

    const QShortcut closing(QKeySequence(QStringLiteral("Ctrl+W")), &m_window);
    QSignalSpy closed(&closing, &QShortcut::activated);
    for (const auto &row : rows) {
        m_recorder.toggle();
        m_outcome = QStringLiteral("cancelled");
        tap(row.keys);
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_outcome == u"beep" || !m_recorder.isRecording(); }));
        EXPECT_EQ(m_outcome.toStdString(), row.outcome);
        EXPECT_EQ(m_recorder.isRecording(), m_outcome == u"beep") << row.outcome;
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
    EXPECT_TRUE(m_service.isSuspended);
    // Without any focus the server drops all keys, those of window managers as well.
    m_window.giveFocus(X11Connection().root());
    EXPECT_FALSE(m_service.isSuspended) << "elsewhere the shortcut works";
    tap(altF4);
    EXPECT_EQ(manager.presses(), 1) << "the keyboard is elsewhere";
    m_window.giveFocus(xcb_window_t(m_window.winId()));
    EXPECT_TRUE(m_service.isSuspended);
    tap(altF4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_outcome == u"⌥F4"; }));
    EXPECT_EQ(manager.presses(), 0);
    tap(altF4);
    EXPECT_EQ(manager.presses(), 1) << "recording is over";
    EXPECT_FALSE(m_service.isSuspended);
}

TEST_F(HotKeyRecorderTest, namesKeysAsTheKeyboardDoes)
{
    // Names are asked for in between, so that only the event can bring the new ones.
    const auto becomes = [this](const char16_t *name) {
        return QTest::qWaitFor([&] { return m_recorder.keyCaps().last() == name; });
    };
    m_recorder.setCombo({12, commandKey});
    EXPECT_TRUE(becomes(u"Q"));
    QSignalSpy changes(&m_recorder, &HotKeyRecorder::keyCapsChanged);
    ASSERT_TRUE(support::setLayout(QStringLiteral("us,fr")));
    tap({support::layoutKey});
    EXPECT_TRUE(becomes(u"A"));
    EXPECT_FALSE(changes.isEmpty());
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("A")), 12);
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("ab")), std::nullopt);
    ASSERT_TRUE(support::setLayout(QStringLiteral("us")));
    EXPECT_TRUE(becomes(u"Q"));
}
