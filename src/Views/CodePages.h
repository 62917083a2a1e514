#pragma once

namespace kelo {

/// Has the system forget which pages of Qt Quick's libraries this process has used: megabytes that a program
/// without windows would otherwise keep. What is needed again is found in the page cache, a fault at a time.
void releaseCodePages();

} // namespace kelo
