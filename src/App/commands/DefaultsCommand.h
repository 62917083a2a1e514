#pragma once

#include "CommandLine/CommandLine.h"

namespace mivora {

class DefaultsStore;

/// `mivora defaults`: shows and changes the settings in \a store. Returns the exit status.
int runDefaults(const DefaultsRequest &request, DefaultsStore &store);

} // namespace mivora
