// Results so large that no cache keeps them are written past the caches: an ordinary store first reads the line that it
// is about to fill.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tavik {

// Whether a result of so many bytes is one of those.
constexpr bool is_streamed(std::size_t bytes) { return bytes >= std::size_t{16} * 1024 * 1024; }

// Copies past the caches. Until they are fenced other threads may not see the bytes.
void stream_copy(void *dst, const void *src, std::size_t bytes);
void fence_stream();

// Calls make(begin, to, count) for runs of elements, which it writes to `to`, in order; they go to dst, which must be
// apart from all that make reads.
template <class Element, class Make> void make_streamed(Element *dst, std::size_t count, const Make &make) {
    constexpr std::size_t line = 64;
    constexpr std::size_t run = 2048 / sizeof(Element);
    alignas(line) Element elements[run];
    // After the first run all begin at a line.
    const std::size_t to_line = (line - reinterpret_cast<std::uintptr_t>(dst) % line) % line / sizeof(Element);
    std::size_t end = std::min(to_line, count);
    for (std::size_t begin = 0; begin < count; begin = end, end = std::min(end + run, count)) {
        make(begin, elements, end - begin);
        stream_copy(dst + begin, elements, (end - begin) * sizeof(Element));
    }
    fence_stream();
}

} // namespace tavik
