#include "discovery/ResidentPages.h"

#include <sys/mman.h>

#include <cstdint>

namespace LaneTapUI {
namespace {

void advisePages(const void* begin, std::size_t size, int advice) {
    constexpr std::uintptr_t page = 4096;
    const auto start = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (start + page - 1) & ~(page - 1);
    const std::uintptr_t end = (start + size) & ~(page - 1);
    if (end > first) {
        madvise(reinterpret_cast<void*>(first), end - first, advice);
    }
}

}  // namespace

void makeResident(const void* begin, std::size_t size) {
#ifdef MADV_POPULATE_WRITE
    advisePages(begin, size, MADV_POPULATE_WRITE);
#else
    (void)begin;
    (void)size;
#endif
}

void releasePages(const void* begin, std::size_t size) {
    advisePages(begin, size, MADV_DONTNEED);
}

}  // namespace LaneTapUI
