#include "KeloHotkey/KeyboardLayout.h"

#include "KeloHotkey/HotKeyCombo.h"
#include "KeloHotkey/backends/X11Keyboard.h"
#include "XkbLayoutSwitch.h"
#include "support/FakeKeyboard.h"

#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

using namespace kelo;

namespace {

class KeyboardLayoutTest : public testing::Test
{
protected:
    ~KeyboardLayoutTest() override { setLayout("us"); }

    void setLayout(const char *layout)
    {
        ASSERT_TRUE(m_keyboard.setLayout(QString::fromLatin1(layout)));
        // Names are asked for in between, so that only the event can bring the new ones.
        QTest::qWait(50);
    }

    support::FakeKeyboard m_keyboard;
};

bool becomes(std::uint16_t keyCode, QStringView name)
{
    return QTest::qWaitFor([&] { return KeyboardLayout::displayName(keyCode) == name; });
}

} // namespace

TEST_F(KeyboardLayoutTest, followsTheDisplaysLayout)
{
    EXPECT_TRUE(becomes(12, u"Q"));
    int changes = 0;
    QObject context;
    KeyboardLayout::onChange(&context, [&] { ++changes; });
    setLayout("fr");
    EXPECT_TRUE(becomes(12, u"A"));
    EXPECT_GT(changes, 0);
    EXPECT_EQ((HotKeyCombo{12, commandKey | shiftKey}).displayString(), QStringLiteral("⇧⌘A"));
    EXPECT_EQ(KeyboardLayout::displayName(33), QStringLiteral("^"));
    EXPECT_EQ(KeyboardLayout::displayName(122), QStringLiteral("F1"));
    setLayout("us,ru,fr");
    EXPECT_TRUE(becomes(12, u"Q"));
    lockLayout(X11Keyboard::connection(), 2);
    EXPECT_TRUE(becomes(12, u"A"));
    lockLayout(X11Keyboard::connection(), 1);
    EXPECT_TRUE(becomes(12, u"Q")) << "Russian names no keys";
    lockLayout(X11Keyboard::connection(), 0);
}

TEST_F(KeyboardLayoutTest, findsTheKeyOfACharacter)
{
    setLayout("fr");
    ASSERT_TRUE(becomes(12, u"A"));
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("V")), 9);
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("a")), 12);
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("é")), 19);
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("ab")), std::nullopt);
    EXPECT_EQ(KeyboardLayout::keyCode(QString()), std::nullopt);
}
