#pragma once

#include "KeloHotkey/HotKeyService.h"

#include <map>

namespace kelo {

/// A service that remembers what was registered, and refuses what it is told is taken.
class FakeHotKeyService final : public HotKeyService
{
public:
    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override
    {
        if (!isTaken)
            registered.emplace(id, combo);
        return !isTaken;
    }

    void unregisterHotKey(std::uint32_t id) override { registered.erase(id); }

    HotKeyState state() const override
    {
        if (answer || registered.empty())
            return answer.value_or(HotKeyState());
        return {HotKeyState::Kind::registered, registered.rbegin()->second.text()};
    }

    /// The desktop says how it stands.
    void tell(const HotKeyState &state)
    {
        answer = state;
        Q_EMIT stateChanged();
    }

    void suspend() override { isSuspended = true; }

    void resume() override { isSuspended = false; }

    /// The user presses the combination; nothing happens unless it is registered.
    void press(const HotKeyCombo &combo)
    {
        for (const auto &[id, known] : std::map(registered)) {
            if (known == combo)
                Q_EMIT pressed(id);
        }
    }

    std::optional<HotKeyState> answer;
    bool isTaken = false;
    std::map<std::uint32_t, HotKeyCombo> registered;
    bool isSuspended = false;
};

} // namespace kelo
