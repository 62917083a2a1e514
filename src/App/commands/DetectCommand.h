#pragma once

#include "CommandLine/CommandLine.h"

namespace mivora {

/// `mivora detect`: prints the join link of the given texts. Returns the exit status.
int runDetect(const DetectRequest &request);

} // namespace mivora
