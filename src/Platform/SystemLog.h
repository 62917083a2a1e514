#pragma once

#include <QString>

namespace mivora {

/// Whether `c` breaks the line that it stands in, is an order to a terminal, or rearranges what comes after
/// it: control characters (both sets of ISO 6429), separators of lines and paragraphs, and the embeddings,
/// overrides and isolates of the bidirectional algorithm (UAX #9).
bool isUnsafeInLine(QChar c);

/// `text` on one line: unsafe characters become blanks. For what comes out of calendars and ends
/// in a terminal or a log.
QString singleLine(QString text);

/// Writes `line` to the system log as a warning, and to standard error where somebody may be reading that.
/// Never blocks and never fails; without a log daemon only standard error is left.
void writeToSystemLog(const QString &line);

} // namespace mivora
