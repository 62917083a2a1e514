#pragma once

#include "KeloHotkey/HotKeyService.h"

#include <map>

namespace kelo {

/// A service that remembers what was registered, and counts how often it was suspended and resumed.
class FakeHotKeyService final : public HotKeyService
{
public:
    bool canRegister() const override { return true; }

    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override
    {
        if (accepts)
            registered.emplace(id, combo);
        return accepts;
    }

    void unregisterHotKey(std::uint32_t id) override { registered.erase(id); }

    void suspend() override { ++suspensions; }

    void resume() override { ++resumptions; }

    bool isSuspended() const { return suspensions > resumptions; }

    /// The user presses the combination; nothing happens unless it is registered.
    void press(const HotKeyCombo &combo)
    {
        for (const auto &[id, known] : std::map(registered)) {
            if (known == combo)
                Q_EMIT pressed(id);
        }
    }

    bool accepts = true;
    std::map<std::uint32_t, HotKeyCombo> registered;
    int suspensions = 0;
    int resumptions = 0;
};

} // namespace kelo
