#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <malloc.h>

#ifdef __has_feature
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__
#endif
#endif

#ifdef __SANITIZE_ADDRESS__
// Of the sanitizer's interface; not every compiler comes with the header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace support {

/// What this process holds at a moment.
struct ProcessFigures
{
    /// Allocated and not freed.
    std::size_t bytes = 0;
    long descriptors = 0;
    long threads = 0;

    static ProcessFigures now()
    {
        return {allocatedBytes(), entries("/proc/self/fd"), entries("/proc/self/task")};
    }

private:
    static std::size_t allocatedBytes()
    {
#ifdef __SANITIZE_ADDRESS__
        return __sanitizer_get_current_allocated_bytes();
#else
        const auto info = mallinfo2();
        return info.uordblks + info.hblkhd;
#endif
    }

    static long entries(const char *folder)
    {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }
};

} // namespace support
