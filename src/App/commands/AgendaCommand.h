#pragma once

#include "CommandLine/CommandLine.h"

namespace mivora {

/// `mivora agenda`: prints the day, once or whenever it changes. Returns the exit status.
int runAgenda(const AgendaRequest &request);

} // namespace mivora
