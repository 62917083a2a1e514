#include "Views/CodePages.h"

#include <algorithm>
#include <array>
#include <link.h>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace kelo {

namespace {

// What only views need.
constexpr std::array<std::string_view, 6> libraries{"libQt6Quick", "libQt6Qml",    "libQt6QmlModels",
                                                    "libQt6Svg",   "libQt6OpenGL", "mivora-views"};

bool isForViewsOnly(std::string_view path)
{
    const std::string_view file = path.substr(path.rfind('/') + 1);
    return std::any_of(libraries.begin(), libraries.end(),
                       [&](std::string_view library) { return file.starts_with(library); });
}

// Segments that can't be written are just as in their file. Those with relocations are writable ones.
void releaseSegment(const dl_phdr_info &object, const ElfW(Phdr) & segment)
{
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W))
        return;
    const auto pageMask = ~ElfW(Addr)(sysconf(_SC_PAGESIZE) - 1);
    const ElfW(Addr) address = object.dlpi_addr + segment.p_vaddr;
    const ElfW(Addr) first = address & pageMask;
    // The last page may hold the beginning of the next segment too, in a mapping of its own.
    const ElfW(Addr) end = (address + segment.p_memsz) & pageMask;
    if (first < end)
        madvise(reinterpret_cast<void *>(first), end - first, MADV_DONTNEED);
}

} // namespace

void releaseCodePages()
{
    const auto release = [](dl_phdr_info *object, std::size_t, void *) {
        if (isForViewsOnly(object->dlpi_name)) {
            for (int i = 0; i < object->dlpi_phnum; ++i)
                releaseSegment(*object, object->dlpi_phdr[i]);
        }
        return 0;
    };
    dl_iterate_phdr(release, nullptr);
}

} // namespace kelo
