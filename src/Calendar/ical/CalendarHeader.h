#pragma once

#include "Calendar/ical/CalendarText.h"

namespace mivora {

/// Fills name, colour and owner of \a calendar from \a header, what stands before the first component.
void readHeader(std::string_view header, CalendarText &calendar);

/// COLOR holds a name of CSS 3 (RFC 7986, 5.9), though some programs write a hexadecimal form. Calendar
/// programs of the desktop also write the functional one, "rgb(53,132,228)".
std::optional<Color> colorFrom(const std::string &text);

} // namespace mivora
