#include "tests/load/host_work.h"

#include <vector>

namespace tavik_test {

struct HostWork::Pool {
    std::vector<std::jthread> threads;
};

HostWork::HostWork() : pool(std::make_unique<Pool>()) {
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i)
        pool->threads.emplace_back([](const std::stop_token &stopped) {
            while (!stopped.stop_requested()) compute();
        });
}

HostWork::~HostWork() = default;

} // namespace tavik_test
