#pragma once

#include "CommandLine/CommandLine.h"

namespace mivora {

/// Starts the application in the tray and runs it until it quits; where one runs already, brings up its
/// settings instead. Returns the exit status.
int runApplication(int &argc, char **argv, StartedBy startedBy);

} // namespace mivora
