#include "KeloHotkey/HotKeyJudgement.h"

#include "KeloHotkey/VirtualKeys.h"

namespace kelo {

namespace {

// With command alone these belong to the desktop and to editing.
constexpr std::uint32_t reservedWithCommand[] = {virtualC, virtualV,   virtualX,    virtualQ,
                                                 virtualW, virtualTab, virtualSpace};

bool isModifierKey(std::uint32_t keyCode)
{
    return keyCode >= virtualRightCommand && keyCode <= virtualFunction;
}

bool isReserved(const HotKeyCombo &combo)
{
    return combo.modifiers == commandKey &&
           std::ranges::find(reservedWithCommand, combo.keyCode) != std::end(reservedWithCommand);
}

} // namespace

HotKeyJudgement HotKeyJudgement::judge(std::optional<std::uint32_t> keyCode, Qt::KeyboardModifiers modifiers)
{
    if (!keyCode)
        return {Verdict::Reject, {}};
    if (*keyCode == virtualEscape)
        return {Verdict::Cancel, {}};
    if (isModifierKey(*keyCode))
        return {Verdict::Wait, {}};
    const HotKeyCombo combo{*keyCode, HotKeyCombo::carbonFlags(modifiers)};
    const bool isShiftAtMost = (combo.modifiers & ~std::uint32_t{shiftKey}) == 0;
    if (isShiftAtMost || isReserved(combo))
        return {Verdict::Reject, {}};
    return {Verdict::Accept, combo};
}

} // namespace kelo
