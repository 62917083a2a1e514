#pragma once

#include "Platform/LoginItem.h"

#include <vector>

namespace mivora {

/// A login item that only remembers what was asked of it.
class FakeLoginItem final : public LoginItem
{
public:
    bool isEnabled() const override { return enabled; }

    std::optional<QString> setEnabled(bool wanted) override
    {
        requests.push_back(wanted);
        if (!error)
            enabled = wanted;
        return error;
    }

    bool enabled = false;
    /// What every change answers; the state then stays.
    std::optional<QString> error;
    /// Every setEnabled() so far.
    std::vector<bool> requests;
};

} // namespace mivora
