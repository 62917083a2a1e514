#pragma once

namespace kelo {

/// Plays the desktop's alert sound: the bell of the X server, which desktops turn into a sound of their own.
/// Silent where the application's windows are not on an X server.
void systemBeep();

} // namespace kelo
