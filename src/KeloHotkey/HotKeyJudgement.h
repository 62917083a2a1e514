#pragma once

#include "KeloHotkey/HotKeyCombo.h"

namespace kelo {

/// What a shortcut recorder makes of a key that goes down.
struct HotKeyJudgement
{
    enum class Verdict {
        /// A modifier key went down; the shortcut is still to come.
        Wait,
        /// Stop recording, the combination stays as it was.
        Cancel,
        /// Beep and keep recording.
        Reject,
        /// Stop recording, `combo` is the new combination.
        Accept,
    };

    Verdict verdict = Verdict::Reject;
    /// Of an accepted key; not to be used otherwise.
    HotKeyCombo combo;

    friend bool operator==(const HotKeyJudgement &, const HotKeyJudgement &) = default;

    /// Judges a key by its virtual key code, if it has one, and the modifiers held with it.
    static HotKeyJudgement judge(std::optional<std::uint32_t> keyCode, Qt::KeyboardModifiers modifiers);
};

} // namespace kelo
