#pragma once

#include "CommandLine/CommandLine.h"

namespace mivora {

/// `mivora join` and its like: has the running program do it. Returns the exit status.
int runRemote(const RemoteRequest &request);

} // namespace mivora
