// Parallel loops over index ranges and groups of three tasks, on the worker threads of the platform: oneTBB,
// or the system's thread pool on Windows. The library creates no thread of its own.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tavik {

// A body that handles the indices [begin, end), without its type.
struct RangeBody {
    void (*call)(const void *body, int32_t begin, int32_t end);
    const void *body;
};

// Runs the body over chunks of [first, last) of at least `grain` indices, in any order and at the same time;
// the calling thread takes part. `first` is below `last`. Returns when every index is done.
void run_chunks(int32_t first, int32_t last, int32_t grain, RangeBody body);

// Runs body(begin, end) over parts of [first, last) that cover each index once, in any order and at the same
// time, and returns when all are done. An empty range runs nothing; up to `grain` indices run as one part on
// the calling thread.
template <class Body> void parallel_for(int32_t first, int32_t last, int32_t grain, const Body &body) {
    if (first >= last) return;
    if (int64_t{last} - first <= grain) {
        body(first, last);
        return;
    }
    run_chunks(
        first, last, grain,
        {[](const void *erased, int32_t begin, int32_t end) { (*static_cast<const Body *>(erased))(begin, end); },
         &body});
}

// The elements of a light per-element operation (about a nanosecond or less each) that are worth handing to
// another thread.
constexpr int32_t light_grain = 64 * 1024;

// The rows of `width` light elements that are worth handing to another thread.
constexpr int32_t row_grain(int32_t width) { return std::max(light_grain / std::max(width, 1), 1); }

// Runs body(0), body(1) and body(2), each over so many light elements, at the same time and returns when all have
// finished.
template <class Body> void run_three(std::size_t elements_each, const Body &body) {
    const int32_t grain = elements_each < light_grain ? 3 : 1;
    parallel_for(0, 3, grain, [&](int32_t begin, int32_t end) {
        for (int32_t task = begin; task < end; ++task) body(task);
    });
}

} // namespace tavik
