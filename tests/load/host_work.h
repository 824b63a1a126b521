// Work of a host's own, on the threads that the library's parallel loops share with it. From construction to
// destruction it keeps each of them busy most of the time.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace tavik_test {

class HostWork {
  public:
    HostWork();
    ~HostWork();
    HostWork(const HostWork &) = delete;
    HostWork &operator=(const HostWork &) = delete;

  private:
    // One piece of work.
    static void compute() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(200);
        while (std::chrono::steady_clock::now() < end) continue;
    }

    struct Pool;
    std::unique_ptr<Pool> pool;
};

} // namespace tavik_test
