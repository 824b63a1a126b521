#include "tavik/memops/memops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

TEST(Memops, ByteOperationsGiveTheirWholeTables) {
    Bytes src(65536);
    Bytes dst(65536);
    for (std::size_t i = 0; i < src.size(); ++i) {
        src[i] = static_cast<uint8_t>(i);
        dst[i] = static_cast<uint8_t>(i >> 8);
    }
    Bytes sums = dst;
    Bytes differences = dst;
    Bytes products = dst;
    add_SSE(256, 256, src.data(), sums.data());
    sub_SSE(256, 256, src.data(), differences.data());
    Mult_SSE(256, 256, src.data(), products.data());
    for (std::size_t i = 0; i < src.size(); ++i) {
        ASSERT_EQ(sums[i], std::min(dst[i] + src[i], 255));
        ASSERT_EQ(differences[i], std::max(dst[i] - src[i], 0));
        ASSERT_EQ(products[i], dst[i] * src[i] / 256);
    }
}

TEST(Memops, WholeBlocksOnly) {
    const Bytes ones(64, 1);
    for (const auto operation : {add_SSE, sub_SSE, Mult_SSE}) {
        Bytes dst(64, 99);
        operation(5, 5, ones.data(), dst.data());
        EXPECT_EQ(std::count(dst.begin(), dst.end(), 99), 48);
        EXPECT_NE(dst[15], 99);
        EXPECT_EQ(dst[16], 99);
    }
    alignas(16) std::array<int32_t, 12> from;
    alignas(16) std::array<int32_t, 12> to = {};
    std::iota(from.begin(), from.end(), 1);
    moveSSE(from.data(), to.data(), 10);
    EXPECT_EQ(to, (std::array<int32_t, 12>{1, 2, 3, 4, 5, 6, 7, 8}));
    Bytes bytes(12, 0);
    const Bytes letters = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j', 'k', 'l'};
    moveASM(letters.data(), bytes.data(), 3);
    EXPECT_EQ(bytes, Bytes(12, 0));
    moveASM(letters.data(), bytes.data(), 10);
    EXPECT_EQ(bytes, (Bytes{'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 0, 0, 0, 0}));
}

// A destination inside its source repeats what was copied; one before it is a plain move.
TEST(Memops, CopiesRunForward) {
    Bytes words(400);
    std::iota(words.begin(), words.end(), uint8_t{0});
    moveASM(words.data(), words.data() + 4, 396);
    for (std::size_t i = 0; i < words.size(); ++i) ASSERT_EQ(words[i], i % 4);
    std::iota(words.begin(), words.end(), uint8_t{0});
    moveASM(words.data() + 3, words.data(), 396);
    for (std::size_t i = 0; i < 396; ++i) ASSERT_EQ(words[i], static_cast<uint8_t>(i + 3));

    alignas(16) std::array<uint8_t, 160> blocks;
    std::iota(blocks.begin(), blocks.end(), uint8_t{0});
    moveSSE(blocks.data(), blocks.data() + 16, 36);
    for (std::size_t i = 0; i < blocks.size(); ++i) ASSERT_EQ(blocks[i], i % 16);

    Bytes sums(48, 1);
    add_SSE(32, 1, sums.data(), sums.data() + 8);
    // The second block adds what the first one stored.
    EXPECT_EQ(sums, (Bytes{1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2,
                           3, 3, 3, 3, 3, 3, 3, 3, 2, 2, 2, 2, 2, 2, 2, 2, 1, 1, 1, 1, 1, 1, 1, 1}));
}

TEST(Memops, SquareRoots) {
    float value = 2.0F;
    SSE_SQRT_SS(&value);
    EXPECT_EQ(value, std::sqrt(2.0F));
    value = -1.0F;
    SSE_SQRT_SS(&value);
    EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(sqrt_sse(9.0F), 3.0F);
    EXPECT_TRUE(std::isnan(sqrt_sse(-1.0F)));
}

TEST(Memops, QuicksortSortsEveryLength) {
    std::mt19937 random(7);
    for (std::size_t count : {0, 1, 2, 3, 100, 511, 512, 5000}) {
        Bytes data(count + 1);
        std::generate(data.begin(), data.end(), [&] { return static_cast<uint8_t>(random() >> 20); });
        Bytes sorted = data;
        std::sort(sorted.begin(), sorted.end() - 1);
        quicksort(data.data(), static_cast<int32_t>(count));
        EXPECT_EQ(data, sorted) << count;
    }
    Bytes data = {3, 1, 2};
    quicksort(data.data(), -3);
    EXPECT_EQ(data, (Bytes{3, 1, 2}));
}

TEST(Memops, ParallelSortRunsTwoPhasesFewerThanElements) {
    Floats two = {2, 1};
    xParallelSort(two.data(), 2);
    EXPECT_EQ(two, (Floats{2, 1}));
    Floats three = {3, 2, 1};
    xParallelSort(three.data(), 3);
    EXPECT_EQ(three, (Floats{2, 3, 1}));
    xParallelSort(three.data(), -2147483647 - 1);
    EXPECT_EQ(three, (Floats{2, 3, 1}));
}

// What holds in every interleaving: no value is made up, and order once reached stays.
TEST(Memops, ParallelSortMovesOnlyWhatIsOutOfOrder) {
    Floats sorted(1000);
    std::iota(sorted.begin(), sorted.end(), -500.0F);
    Floats data = sorted;
    xParallelSort(data.data(), 1000);
    EXPECT_EQ(data, sorted);
    std::shuffle(data.begin(), data.end(), std::mt19937(3));
    const Floats before = data;
    xParallelSort(data.data(), 1000);
    EXPECT_NE(data, before);
    for (const float value : data) EXPECT_TRUE(std::binary_search(sorted.begin(), sorted.end(), value));
}

template <auto Export> void on_blocks(Workspace &w) {
    w.width *= 16;
    call(Export, w.size(), w.buffer(), w.buffer());
}

const BulkCase cases[] = {
    {"add_SSE", on_blocks<add_SSE>},
    {"sub_SSE", on_blocks<sub_SSE>},
    {"Mult_SSE", on_blocks<Mult_SSE>},
    {"moveSSE",
     [](Workspace &w) {
         const auto words = static_cast<int32_t>(w.count()) * 4;
         moveSSE(w.buffer(w.count() * 16), w.buffer(w.count() * 16), words);
     }},
    {"moveASM",
     [](Workspace &w) {
         moveASM(w.buffer(w.count() / 4 * 4), w.buffer(w.count() / 4 * 4), static_cast<int32_t>(w.count()));
     }},
    {"quicksort", [](Workspace &w) { quicksort(w.buffer(), static_cast<int32_t>(w.count())); }},
};

const BulkFamily family("Memops", cases);

} // namespace
