#pragma once

#include "Platform/SystemEvents.h"

namespace mivora {

/// A system on which nothing happens but what a test emits.
class FakeSystemEvents final : public SystemEvents
{
    Q_OBJECT

public:
    using SystemEvents::SystemEvents;
};

} // namespace mivora
