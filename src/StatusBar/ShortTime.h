#pragma once

#include "Meetings/Timestamp.h"

#include <QLocale>
#include <QString>
#include <QTimeZone>

namespace mivora {

/// The time of day that clocks in \a zone show at \a time, without date and seconds, as \a locale writes it:
/// "9:05 AM", "09:05". Pass QLocale::system() for the user's own way, LC_TIME included.
QString shortTime(Timestamp time, const QTimeZone &zone, const QLocale &locale);

} // namespace mivora
