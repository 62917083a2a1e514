#pragma once

#include "Meetings/Timestamp.h"

#include <QString>
#include <QTimeZone>
#include <optional>
#include <string_view>

/// Date and time as text (RFC 3339).
namespace mivora {

/// The instant that `text` names, such as "2026-03-28T09:00:00+01:00" or "2026-03-28T08:00:00.5Z". Nothing
/// when it is not in that form, has no offset, or names a day or time that does not exist.
std::optional<Timestamp> timestampFromRfc3339(std::string_view text);

/// `time` as a clock in `zone` shows it, with the zone's offset; milliseconds only where there are any. In
/// UTC, and the nearest there is, where that clock's year doesn't have four digits.
QString rfc3339(Timestamp time, const QTimeZone &zone);

} // namespace mivora
