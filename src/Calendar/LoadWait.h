#pragma once

#include <chrono>

namespace mivora {

class EventStore;

/// Runs the event loop until \a store has loaded. Returns false when \a limit passed first. For programs that
/// ask once and end; everybody else listens to EventStore::changed().
bool waitUntilLoaded(EventStore &store, std::chrono::milliseconds limit);

} // namespace mivora
