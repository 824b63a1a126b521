#include "tests/support/guarded_memory.h"

#include <new>
#include <stdexcept>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#endif

namespace tavik_test {
namespace {

// Windows reserves in units of 64 KiB; on other systems pages of that size at most.
constexpr std::size_t page = 65536;

} // namespace

GuardedMemory::GuardedMemory(std::size_t capacity) : accessible((capacity + page - 1) / page * page) {
#if defined(_WIN32)
    pages = static_cast<uint8_t *>(VirtualAlloc(nullptr, accessible + 2 * page, MEM_RESERVE, PAGE_NOACCESS));
    if (pages == nullptr || VirtualAlloc(pages + page, accessible, MEM_COMMIT, PAGE_READWRITE) == nullptr)
        throw std::bad_alloc();
#else
    void *reserved = mmap(nullptr, accessible + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (reserved == MAP_FAILED) throw std::bad_alloc();
    pages = static_cast<uint8_t *>(reserved);
    if (mprotect(pages + page, accessible, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
#endif
}

GuardedMemory::~GuardedMemory() {
#if defined(_WIN32)
    VirtualFree(pages, 0, MEM_RELEASE);
#else
    munmap(pages, accessible + 2 * page);
#endif
}

uint8_t *GuardedMemory::place(std::size_t bytes, Placement placement) const {
    if (bytes > accessible) throw std::length_error("a guarded buffer exceeds its memory");
    uint8_t *start = pages + page;
    return placement == Placement::against_the_page_before ? start : start + accessible - bytes;
}

} // namespace tavik_test
