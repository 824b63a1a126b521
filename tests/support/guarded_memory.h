// Memory between two inaccessible pages, so that a read or write one byte outside a buffer faults.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavik_test {

enum class Placement { against_the_page_before, against_the_page_after };

class GuardedMemory {
  public:
    explicit GuardedMemory(std::size_t capacity);
    ~GuardedMemory();
    GuardedMemory(const GuardedMemory &) = delete;
    GuardedMemory &operator=(const GuardedMemory &) = delete;

    std::size_t capacity() const { return accessible; }

    // `bytes` bytes, up to the capacity, that touch one of the pages.
    uint8_t *place(std::size_t bytes, Placement placement) const;

  private:
    uint8_t *pages;
    std::size_t accessible;
};

} // namespace tavik_test
