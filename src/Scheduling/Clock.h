#pragma once

#include "Meetings/Timestamp.h"

namespace mivora {

/// Tells the current time.
class Clock
{
public:
    virtual ~Clock() = default;

    virtual Timestamp now() const = 0;
};

/// The system's clock.
class SystemClock final : public Clock
{
public:
    Timestamp now() const override { return std::chrono::system_clock::now(); }
};

} // namespace mivora
