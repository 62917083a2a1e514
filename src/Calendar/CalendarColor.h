#pragma once

#include "Meetings/Color.h"

namespace mivora {

/// COLOR holds a name of CSS 3 (RFC 7986, 5.9), though some programs write a hexadecimal form. Calendar
/// programs of the desktop also write the functional one, "rgb(53,132,228)".
std::optional<Color> colorFrom(const std::string &text);

} // namespace mivora
