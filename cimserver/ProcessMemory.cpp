#include "cimserver/ProcessMemory.hpp"

#include "cimserver/common/Descriptor.hpp"

#include <fcntl.h>
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace cimserver {
namespace {

/// A page as /proc/self/pagemap shows it; proc(5) names the bits.
using Page = std::uint64_t;

bool isUnchanged(Page page) {
    constexpr unsigned kOfFile = 61; // not a copy made by a write
    return ((page >> kOfFile) & 1U) != 0;
}

void giveBackUnchanged(int map, std::uintptr_t begin, std::uintptr_t end) {
    const auto size = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    std::array<Page, 512> pages{};
    for (auto at = begin / size * size; at < end; at += pages.size() * size) {
        pages.fill(0);
        if (::pread(map, pages.data(), sizeof pages, static_cast<off_t>(at / size * sizeof(Page))) < 0) {
            return;
        }
        auto* const last = pages.begin() + std::min(pages.size(), (end - at + size - 1) / size);
        for (auto* first = pages.begin(); (first = std::find_if(first, last, isUnchanged)) != last;) {
            auto* const past = std::find_if_not(first, last, isUnchanged);
            const auto offset = static_cast<std::size_t>(first - pages.begin()) * size;
            // NOLINTNEXTLINE(performance-no-int-to-ptr): the dynamic linker tells addresses as numbers
            ::madvise(reinterpret_cast<void*>(at + offset), static_cast<std::size_t>(past - first) * size,
                      MADV_DONTNEED);
            first = past;
        }
    }
}

/// The segments that the process does not write to, of one program or library.
int giveBackObject(dl_phdr_info* object, std::size_t, void* data) {
    for (const auto* part = object->dlpi_phdr; part != object->dlpi_phdr + object->dlpi_phnum; ++part) {
        if (part->p_type == PT_LOAD && (part->p_flags & PF_W) == 0) {
            const auto begin = object->dlpi_addr + part->p_vaddr;
            giveBackUnchanged(*static_cast<const int*>(data), begin, begin + part->p_memsz);
        }
    }
    return 0;
}

} // namespace

void boundHeap() {
#ifdef __GLIBC__
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    ::mallopt(M_ARENA_MAX, 2);
#endif
}

void giveBackStart() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
    const Descriptor map(::open("/proc/self/pagemap", O_RDONLY | O_CLOEXEC));
    int fd = map.get();
    ::dl_iterate_phdr(giveBackObject, &fd);
}

} // namespace cimserver
