#pragma once

namespace kelo {

struct StatusItemState;

/// One way to bring a status item onto the screen.
class StatusItemBackend
{
public:
    virtual ~StatusItemBackend() = default;

    /// Shows this state from now on.
    virtual void show(const StatusItemState &state) = 0;
};

} // namespace kelo
