#pragma once

#include "KeloHotkey/HotKeyServices.h"

namespace kelo {

/// Stands in where no shortcut can be registered, and says so once in the log.
class NoService final : public HotKeyService
{
    Q_OBJECT

public:
    explicit NoService(const HotKeyPurpose &purpose);

    /// Tells in the log how the user can help himself.
    static void logAdvice(const HotKeyPurpose &purpose);

    bool canRegister() const override { return false; }

    bool registerHotKey(const HotKeyCombo &, std::uint32_t) override { return false; }

    void unregisterHotKey(std::uint32_t) override {}

    void suspend() override {}

    void resume() override {}
};

} // namespace kelo
