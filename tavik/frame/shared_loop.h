// A loop whose chunks are taken by any number of workers, for the backends without a scheduler of their own.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>

#include "tavik/frame/parallel_for.h"

namespace tavik {

class SharedLoop {
  public:
    SharedLoop(int32_t first, int32_t last_index, int32_t grain, int64_t processors, RangeBody range_body)
        : next(first), last(last_index), body(range_body) {
        const int64_t count = last - first;
        // A few chunks per processor, so that one that finishes early finds more to do.
        constexpr int64_t chunks_per_processor = 4;
        chunk = std::max<int64_t>(grain, count / (processors * chunks_per_processor) + 1);
        workers = std::min(processors, (count + chunk - 1) / chunk) - 1;
    }

    // The workers worth having beside the calling thread.
    int64_t worker_count() const { return workers; }

    // Takes chunks until none are left.
    void take_part() {
        for (;;) {
            const int64_t begin = next.fetch_add(chunk, std::memory_order_relaxed);
            if (begin >= last) return;
            body.call(body.body, static_cast<int32_t>(begin), static_cast<int32_t>(std::min(begin + chunk, last)));
        }
    }

  private:
    // 64-bit, so that those who find the end cannot run past the largest index.
    std::atomic<int64_t> next;
    int64_t last;
    int64_t chunk;
    int64_t workers;
    RangeBody body;
};

} // namespace tavik
