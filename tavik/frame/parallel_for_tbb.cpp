#include "tavik/frame/parallel_for.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace tavik {

void run_chunks(int32_t first, int32_t last, int32_t grain, RangeBody body) {
    tbb::parallel_for(
        tbb::blocked_range<int32_t>(first, last, static_cast<std::size_t>(grain)),
        [&](const tbb::blocked_range<int32_t> &range) { body.call(body.body, range.begin(), range.end()); });
}

} // namespace tavik
