#pragma once

#include <QString>

namespace mivora {

/// Writes `line` to the system log as a warning, and to standard error where somebody may be reading that.
/// Never blocks and never fails; without a log daemon only standard error is left.
void writeToSystemLog(const QString &line);

} // namespace mivora
