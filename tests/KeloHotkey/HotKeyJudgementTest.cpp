#include "KeloHotkey/HotKeyJudgement.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

using Verdict = HotKeyJudgement::Verdict;

constexpr auto none = Qt::NoModifier;
constexpr auto shift = Qt::ShiftModifier;
constexpr auto control = Qt::ControlModifier;
constexpr auto option = Qt::AltModifier;
constexpr auto command = Qt::MetaModifier;

} // namespace

TEST(HotKeyJudgement, decidesWhatARecorderDoesWithAKey)
{
    const struct
    {
        const char *what;
        std::optional<std::uint32_t> keyCode;
        Qt::KeyboardModifiers modifiers;
        HotKeyJudgement expected;
    } cases[] = {
        {"Escape", 53, none, {Verdict::Cancel, {}}},
        {"⌘Escape", 53, command, {Verdict::Cancel, {}}},
        {"V", 9, none, {Verdict::Reject, {}}},
        {"⇧V", 9, shift, {Verdict::Reject, {}}},
        {"V with keypad flag", 9, Qt::KeypadModifier, {Verdict::Reject, {}}},
        {"F5", 96, none, {Verdict::Reject, {}}},
        {"⌘V", 9, command, {Verdict::Reject, {}}},
        {"⌘C", 8, command, {Verdict::Reject, {}}},
        {"⌘X", 7, command, {Verdict::Reject, {}}},
        {"⌘Q", 12, command, {Verdict::Reject, {}}},
        {"⌘W", 13, command, {Verdict::Reject, {}}},
        {"⌘Tab", 48, command, {Verdict::Reject, {}}},
        {"⌘Space", 49, command | Qt::KeypadModifier, {Verdict::Reject, {}}},
        {"⇧⌘V", 9, shift | command, {Verdict::Accept, {9, 0x300}}},
        {"⌃V", 9, control, {Verdict::Accept, {9, 0x1000}}},
        {"⌥Space", 49, option, {Verdict::Accept, {49, 0x800}}},
        {"⌘J", 38, command, {Verdict::Accept, {38, 0x100}}},
        {"⌘A, the key with code 0", 0, command, {Verdict::Accept, {0, 0x100}}},
        {"the command key itself", 55, command, {Verdict::Wait, {}}},
        {"the right control key", 62, control | shift, {Verdict::Wait, {}}},
        {"a key without code", {}, command, {Verdict::Reject, {}}},
    };

    for (const auto &row : cases)
        EXPECT_EQ(HotKeyJudgement::judge(row.keyCode, row.modifiers), row.expected) << row.what;
}
