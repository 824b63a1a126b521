// What the families stand on, tested below the exports.
#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

namespace {

TEST(ParallelFor, CoversEachIndexOnce) {
    struct Case {
        int32_t first, last, grain;
    };
    for (const Case &c : {Case{0, 1000, 7}, Case{-50, 60000, 1}, Case{5, 6, 1}, Case{0, 8, 8}, Case{0, 9, 8},
                          Case{2147483000, 2147483647, 10}}) {
        std::vector<std::atomic<int>> visits(static_cast<std::size_t>(c.last - c.first));
        parallel_for(c.first, c.last, c.grain, [&](int32_t begin, int32_t end) {
            EXPECT_LT(begin, end);
            for (int32_t i = begin; i < end; ++i) ++visits[static_cast<std::size_t>(i - c.first)];
        });
        EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](const auto &count) { return count == 1; }));
    }
}

TEST(ParallelFor, RunsNothingForAnEmptyRangeAndLittleWorkOnTheCallingThread) {
    for (const int32_t last : {0, -1, std::numeric_limits<int32_t>::min()})
        parallel_for(0, last, 1, [](int32_t, int32_t) { FAIL() << "the range is empty"; });
    int parts = 0;
    const auto caller = std::this_thread::get_id();
    parallel_for(3, 103, 100, [&](int32_t begin, int32_t end) {
        ++parts;
        EXPECT_EQ(begin, 3);
        EXPECT_EQ(end, 103);
        EXPECT_EQ(std::this_thread::get_id(), caller);
    });
    EXPECT_EQ(parts, 1);
}

TEST(FetchAhead, CoversEachElementOnceInOrder) {
    const std::vector<uint8_t> bytes(3);
    const std::vector<float> floats(3);
    // Of small buffers one run, of large ones blocks that both sorts of elements fit into.
    struct Case {
        std::size_t count, first, longest;
    };
    for (const Case &c : {Case{0, 0, 0}, Case{1000, 7, 993}, Case{1024 * 1024 + 5, 7, 256}}) {
        const FetchAhead buffers(c.count, bytes.data(), floats.data());
        std::size_t next = c.first;
        std::size_t longest = 0;
        buffers.for_runs(c.first, c.count, [&](std::size_t start, std::size_t run) {
            EXPECT_EQ(start, next);
            next = start + run;
            longest = std::max(longest, run);
        });
        EXPECT_EQ(next, c.count);
        EXPECT_EQ(longest, c.longest);
    }
}

TEST(FetchAhead, CoversPackedRowsOnce) {
    constexpr int32_t width = 1001;
    constexpr int32_t height = 1100;
    std::vector<std::atomic<uint8_t>> visits(std::size_t{width} * height);
    const FetchAhead buffers(visits.size(), visits.data());
    const auto visit = [&](std::size_t start, std::size_t run) {
        for (std::size_t i = start; i < start + run; ++i) ++visits[i];
    };
    buffers.for_rows(width, height, visit);
    buffers.for_rows(-width, height, visit);
    buffers.for_rows(width, -height, visit);
    buffers.for_all(visit);
    buffers.for_all_in_parallel(visit);
    EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](const auto &count) { return count == 3; }));
}

TEST(ParallelFor, RunsInsideItself) {
    std::atomic<int> visits = 0;
    parallel_for(0, 40, 1, [&](int32_t begin, int32_t end) {
        for (int32_t i = begin; i < end; ++i)
            parallel_for(0, 50, 1, [&](int32_t inner_begin, int32_t inner_end) { visits += inner_end - inner_begin; });
    });
    EXPECT_EQ(visits, 2000);
}

TEST(ParallelFor, RunsThreeTasks) {
    for (const std::size_t elements : {std::size_t{1}, std::size_t{1000000}}) {
        std::array<std::atomic<int>, 3> visits = {};
        run_three(elements, [&](int32_t task) { ++visits[static_cast<std::size_t>(task)]; });
        for (const auto &count : visits) EXPECT_EQ(count, 1);
    }
}

TEST(Arithmetic, TruncationIsTheProcessors) {
    constexpr int32_t lowest = std::numeric_limits<int32_t>::min();
    EXPECT_EQ(truncate(2147483520.0F), 2147483520);
    EXPECT_EQ(truncate(2147483648.0F), lowest);
    EXPECT_EQ(truncate(-2147483648.0F), lowest);
    EXPECT_EQ(truncate(-2147483904.0F), lowest);
    EXPECT_EQ(truncate(std::nanf("")), lowest);
    EXPECT_EQ(truncate(2147483647.0), 2147483647);
    EXPECT_EQ(truncate(2147483647.9), 2147483647);
    EXPECT_EQ(truncate(2147483648.0), lowest);
    EXPECT_EQ(truncate(-2147483648.0), lowest);
    EXPECT_EQ(truncate(-1.9), -1);
}

TEST(SizeForm, ProductsWrapAndNegativeOnesAreEmpty) {
    EXPECT_EQ(counts(-4, 3), 0U);
    EXPECT_EQ(counts(65536, 32768), 0U);
    EXPECT_EQ(counts(65536, 65537), 65536U);
    EXPECT_EQ(upper_bounds(2147483647, 0), 0U);
    EXPECT_EQ(upper_bounds(-1, 7), 0U);
    EXPECT_EQ(one_short(0, 0), 0U);
    EXPECT_EQ(one_short(5, 5), 24U);
}

TEST(Overlap, PlanesAreTheSameOrApart) {
    std::array<uint8_t, 100> bytes;
    EXPECT_TRUE(same_or_apart(&bytes[0], &bytes[0], 10));
    EXPECT_TRUE(same_or_apart(&bytes[0], &bytes[10], 10));
    EXPECT_TRUE(same_or_apart(&bytes[10], &bytes[0], 10));
    EXPECT_FALSE(same_or_apart(&bytes[0], &bytes[9], 10));
    EXPECT_FALSE(same_or_apart(&bytes[9], &bytes[0], 10));
}

TEST(Random, RepeatsAfterASeedOnOneThread) {
    const auto draw = [] {
        std::vector<uint16_t> numbers(1000);
        draw_random(numbers.data(), numbers.size());
        return numbers;
    };
    seed_random(7);
    const auto numbers = draw();
    // Another thread's draws and seeds are its own.
    std::thread([&] {
        seed_random(8);
        EXPECT_NE(draw(), numbers);
    }).join();
    seed_random(7);
    EXPECT_EQ(draw(), numbers);
    const auto [lowest, highest] = std::minmax_element(numbers.begin(), numbers.end());
    EXPECT_GE(*lowest, 0);
    EXPECT_LE(*highest, 32767);
    EXPECT_GT(*highest - *lowest, 30000);
    // However they are drawn, one by one or many at a time.
    seed_random(7);
    std::vector<uint16_t> pieces(1000);
    for (std::size_t i = 0, piece = 1; i < pieces.size(); i += piece, piece = piece * 3 % 101)
        draw_random(&pieces[i], std::min(piece, pieces.size() - i));
    EXPECT_EQ(pieces, numbers);
#if !defined(_WIN32)
    seed_random(1);
    std::array<uint16_t, 3> first;
    draw_random(first.data(), first.size());
    EXPECT_EQ(first, (std::array<uint16_t, 3>{41, 18467, 6334}));
#endif
}

} // namespace
