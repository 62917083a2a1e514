#pragma once

#include <QIcon>

namespace kelo {

/// The program's icon for window frames and task bars of X11, in the sizes that these ask for. Wayland's take
/// it from the desktop entry.
QIcon applicationIcon();

} // namespace kelo
