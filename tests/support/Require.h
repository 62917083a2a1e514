#pragma once

#include <cstdio>
#include <cstdlib>

namespace support {

/// Ends a fuzz target, which keeps its input then, when \a holds is false; \a rule says what should hold.
inline void require(bool holds, const char *rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "violated: %s\n", rule);
    std::abort();
}

} // namespace support
