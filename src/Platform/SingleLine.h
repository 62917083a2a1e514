#pragma once

#include <QString>

namespace mivora {

/// \a text on one line: control characters, line ends among them, and those that rearrange a line become
/// blanks. For what comes out of calendars and ends in a terminal or a log.
QString singleLine(QString text);

} // namespace mivora
