#pragma once

#include "KeloHotkey/HotKeyService.h"

namespace kelo {

/// A service that registers nothing and counts how often it was suspended and resumed.
class FakeHotKeyService final : public HotKeyService
{
public:
    bool canRegister() const override { return true; }

    bool registerHotKey(const HotKeyCombo &, std::uint32_t) override { return true; }

    void unregisterHotKey(std::uint32_t) override {}

    void suspend() override { ++suspensions; }

    void resume() override { ++resumptions; }

    bool isSuspended() const { return suspensions > resumptions; }

    int suspensions = 0;
    int resumptions = 0;
};

} // namespace kelo
