#pragma once

#include <QString>
#include <optional>

namespace mivora {

/// Whether the program is started when the user logs in.
class LoginItem
{
public:
    virtual ~LoginItem() = default;

    virtual bool isEnabled() const = 0;

    /// Registers or unregisters the program; returns a description of the error when that failed.
    virtual std::optional<QString> setEnabled(bool enabled) = 0;
};

} // namespace mivora
