// Walks through large buffers with their elements on the way from memory before they are needed.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <tuple>

#include "tavik/frame/parallel_for.h"

namespace tavik {

// Asks the processor to fetch the cache line of an address. Asking never faults, wherever it lies.
inline void prefetch_line(std::uintptr_t address) {
    // The compiler drops its own prefetching function together with loops that do nothing else.
    asm volatile("prefetcht0 (%0)" : : "r"(address));
}

// Asks the processor to fetch the elements from `begin` to `end`.
template <class Element> void prefetch(const Element *elements, std::size_t begin, std::size_t end) {
    constexpr std::size_t line = 64;
    const auto start = reinterpret_cast<std::uintptr_t>(elements);
    for (std::size_t at = begin * sizeof(Element); at < end * sizeof(Element); at += line) prefetch_line(start + at);
}

// Buffers of `count` elements each that a call walks through in step. Rows with much arithmetic leave the processor
// too little room to run ahead by itself: in buffers beyond the caches they wait for memory several times as long as
// they compute, unless it is told what comes next.
template <class... Element> class FetchAhead {
  public:
    explicit FetchAhead(std::size_t count, const Element *...buffers)
        : buffers_(buffers...), count_(count), is_large_(count * (sizeof(Element) + ...) >= std::size_t{1024} * 1024) {}

    // Asks for the elements from `begin` to `end`.
    void fetch(std::size_t begin, std::size_t end) const {
        if (is_large_) std::apply([=](auto... buffer) { (prefetch(buffer, begin, end), ...); }, buffers_);
    }

    // Calls body(start, count) for runs that cover the elements from `begin` to `end` in order.
    template <class Body> void for_runs(std::size_t begin, std::size_t end, const Body &body) const {
        const std::size_t run = is_large_ ? block : end - begin;
        for (std::size_t start = begin; start < end; start += run) {
            const std::size_t next = start + run;
            fetch(next, next + run);
            body(start, std::min(end, next) - start);
        }
    }

    // The same for all elements.
    template <class Body> void for_all(const Body &body) const { for_runs(0, count_, body); }

    // The same at the same time, in any order.
    template <class Body> void for_all_in_parallel(const Body &body) const {
        parallel_for(0, static_cast<int32_t>(count_), light_grain, [&](int32_t begin, int32_t end) {
            for_runs(static_cast<std::size_t>(begin), static_cast<std::size_t>(end), body);
        });
    }

    // Calls body(start, count) for runs that cover height rows of width elements, one after the other in the buffers;
    // at the same time, in any order.
    template <class Body> void for_rows(int32_t width, int32_t height, const Body &body) const {
        const auto stride = static_cast<std::size_t>(std::max(width, 0));
        parallel_for(0, height, row_grain(width),
                     [&](int32_t begin, int32_t end) { for_runs(begin * stride, end * stride, body); });
    }

  private:
    // So many cache lines at a time can be on their way.
    static constexpr std::size_t block = std::bit_floor(32 * 64 / (sizeof(Element) + ...));

    std::tuple<const Element *...> buffers_;
    std::size_t count_;
    bool is_large_;
};

} // namespace tavik
