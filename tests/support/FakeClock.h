#pragma once

#include "Scheduling/Clock.h"

namespace mivora {

/// A clock that stands still until a test moves it.
class FakeClock final : public Clock
{
public:
    Timestamp now() const override { return time; }

    Timestamp time{};
};

} // namespace mivora
