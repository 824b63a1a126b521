// For the thread sanitizer alone: it cannot see into oneTBB, which is built without it.
#include "tavik/frame/parallel_for.h"

#include <thread>
#include <vector>

#include "tavik/frame/shared_loop.h"

namespace tavik {

void run_chunks(int32_t first, int32_t last, int32_t grain, RangeBody body) {
    SharedLoop loop(first, last, grain, 4, body);
    std::vector<std::jthread> workers;
    for (int64_t worker = 0; worker < loop.worker_count(); ++worker)
        workers.emplace_back([&loop] { loop.take_part(); });
    loop.take_part();
}

} // namespace tavik
