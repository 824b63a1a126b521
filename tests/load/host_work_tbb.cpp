#include "tests/load/host_work.h"

#include <tbb/task_group.h>

namespace tavik_test {

struct HostWork::Pool {
    std::atomic<bool> stopped = false;
    tbb::task_group tasks;

    void submit() {
        tasks.run([this] {
            compute();
            if (!stopped) submit();
        });
    }
};

HostWork::HostWork() : pool(std::make_unique<Pool>()) {
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) pool->submit();
}

HostWork::~HostWork() {
    pool->stopped = true;
    pool->tasks.wait();
}

} // namespace tavik_test
