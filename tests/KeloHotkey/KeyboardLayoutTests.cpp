#include "KeloHotkey/KeyboardLayout.h"

#include "KeloHotkey/HotKeyCombo.h"
#include "support/FakeKeyboard.h"

#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace kelo {

// Names are asked for in between, so that only the event can bring the new ones.
static bool becomes(std::uint16_t keyCode, QStringView name)
{
    return QTest::qWaitFor([&] { return KeyboardLayout::displayName(keyCode) == name; });
}

TEST(KeyboardLayout, followsTheDisplaysLayout)
{
    support::FakeKeyboard keyboard;
    EXPECT_TRUE(becomes(12, u"Q"));
    int changes = 0;
    QObject context;
    KeyboardLayout::onChange(&context, [&] { ++changes; });
    ASSERT_TRUE(keyboard.setLayout(QStringLiteral("fr")));
    EXPECT_TRUE(becomes(12, u"A"));
    EXPECT_GT(changes, 0);
    EXPECT_EQ((HotKeyCombo{12, commandKey | shiftKey}).displayString(), QStringLiteral("⇧⌘A"));
    EXPECT_EQ(KeyboardLayout::displayName(33), QStringLiteral("^"));
    EXPECT_EQ(KeyboardLayout::displayName(122), QStringLiteral("F1"));
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("V")), 9);
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("a")), 12);
    EXPECT_EQ(KeyboardLayout::keyCode(QStringLiteral("ab")), std::nullopt);

    ASSERT_TRUE(keyboard.setLayout(QStringLiteral("us,fr,ru")));
    EXPECT_TRUE(becomes(12, u"Q"));
    keyboard.tap({support::FakeKeyboard::layoutKey});
    EXPECT_TRUE(becomes(12, u"A"));
    keyboard.tap({support::FakeKeyboard::layoutKey});
    EXPECT_TRUE(becomes(12, u"Q")) << "Russian names no keys";
    ASSERT_TRUE(keyboard.setLayout(QStringLiteral("us")));
}

} // namespace kelo
