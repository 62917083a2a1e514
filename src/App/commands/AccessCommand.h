#pragma once

#include "CommandLine/CommandLine.h"

namespace mivora {

/// `mivora access`: shows, gives or takes back the permission to read calendars. Returns the exit status.
int runAccess(const AccessRequest &request);

} // namespace mivora
