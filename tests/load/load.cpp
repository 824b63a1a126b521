// Many host threads call every bulk export at once, each on buffers of its own, and compare the bytes with those that
// one thread alone got. `load [SECONDS]` goes on for that long after the first round.
#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <iostream>
#include <random>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

// Beyond the size from which loops are split between threads.
constexpr int32_t width = 501;
constexpr int32_t height = 163;
constexpr std::size_t host_threads = 6;

struct Call {
    const BulkFamily *family;
    const BulkCase *bulk_case;
    std::size_t expected; // hash of all that it writes
};

std::size_t made_by(const BulkCase &bulk_case, Workspace &workspace) {
    workspace.begin(width, height, Placement::against_the_page_after, Destinations::of_their_own);
    bulk_case.call(workspace);
    const auto contents = workspace.contents(false);
    return std::hash<std::string_view>()({reinterpret_cast<const char *>(contents.data()), contents.size()});
}

std::vector<Call> calls_of_one_thread() {
    std::vector<Call> calls;
    Workspace workspace;
    for (const BulkFamily &family : bulk_families())
        for (const BulkCase &bulk_case : family.cases)
            calls.push_back({&family, &bulk_case, made_by(bulk_case, workspace)});
    return calls;
}

class Load {
  public:
    Load(std::vector<Call> calls, std::chrono::seconds duration)
        : calls_(std::move(calls)), end_(std::chrono::steady_clock::now() + duration) {}

    // Whether every call gave the bytes expected.
    bool run() {
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < host_threads; ++thread)
            threads.emplace_back([this, thread] { work(thread); });
        for (std::thread &thread : threads) thread.join();
        std::cout << done_ << " calls of " << calls_.size() << " kinds by " << host_threads << " host threads\n";
        return wrong_ == nullptr;
    }
    const Call *wrong() const { return wrong_; }

  private:
    // Each thread has an order of its own, so that all pairs of exports meet.
    void work(std::size_t thread) {
        Workspace workspace;
        std::vector<const Call *> own;
        for (const Call &call : calls_) own.push_back(&call);
        std::mt19937 random(static_cast<uint32_t>(thread));
        do {
            std::shuffle(own.begin(), own.end(), random);
            for (const Call *call : own) {
                if (wrong_ != nullptr) return;
                if (made_by(*call->bulk_case, workspace) != call->expected) wrong_ = call;
                ++done_;
            }
        } while (std::chrono::steady_clock::now() < end_);
    }

    std::vector<Call> calls_;
    std::chrono::steady_clock::time_point end_;
    std::atomic<std::size_t> done_ = 0;
    std::atomic<const Call *> wrong_ = nullptr;
};

} // namespace

int main(int argc, char **argv) {
    int32_t seconds = 0;
    const std::string_view wanted = argc == 2 ? argv[1] : "0";
    const auto parsed = std::from_chars(wanted.data(), wanted.data() + wanted.size(), seconds);
    if (argc > 2 || parsed.ec != std::errc() || parsed.ptr != wanted.data() + wanted.size() || seconds < 0) {
        std::cerr << "usage: load [SECONDS]\n";
        return 2;
    }
    Load load(calls_of_one_thread(), std::chrono::seconds(seconds));
    if (load.run()) return 0;
    std::cerr << "load: " << load.wrong()->family->name << ", " << load.wrong()->bulk_case->name
              << " gave other bytes than on one thread\n";
    return 1;
}
