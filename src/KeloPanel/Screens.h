#pragma once

#include "KeloPanel/PanelPlacement.h"

#include <optional>
#include <vector>

namespace kelo {

/// The screens of the desktop now, in the platform's order.
std::vector<ScreenArea> currentScreens();

/// The desktop's primary screen; the first one where none is primary; nothing without screens.
std::optional<ScreenArea> mainScreen();

} // namespace kelo
