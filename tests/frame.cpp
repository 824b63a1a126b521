#include "tavik/frame/frame.h"

#include <array>
#include <cstdint>
#include <numeric>

#include <gtest/gtest.h>

#include "tavik/foliage/foliage.h"
#include "tavik/generators/generators.h"
#include "tavik/lighting/lighting.h"
#include "tavik/paint/paint.h"
#include "tavik/raster/raster.h"
#include "tavik/resample/resample.h"
#include "tests/support/bulk.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <unistd.h>
#endif

using namespace tavik_test;

namespace {

TEST(Frame, ComplementTakesHeightFirst) {
    Bytes plane(10);
    std::iota(plane.begin(), plane.end(), uint8_t{0});
    TestPPL2(plane.data(), 2, 4);
    EXPECT_EQ(plane, (Bytes{255, 254, 253, 252, 251, 250, 249, 248, 8, 9}));
    for (const auto &[height, width] : {std::array{0, 4}, std::array{4, 0}, std::array{-1, 4}, std::array{1, -4}})
        TestPPL2(plane.data(), height, width);
    TestPPL2(plane.data(), 4, 2);
    EXPECT_EQ(plane, (Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

// Whatever is passed beside it, a size of nothing returns before anything is read, and soon.
TEST(Frame, EmptySizesTouchNothing) {
    constexpr int32_t high = highest;
    constexpr int32_t low = lowest;
    uint8_t *const u = nullptr;
    float *const f = nullptr;
    const std::array<float, 8> corners = {0, 0, 5, 0, 5, 5, 0, 5};
    tavik_triangle triangle = {};
    for (const auto &[width, height] : {std::array{0, high}, std::array{low, low}, std::array{-1, -1}}) {
        xNova(width, height, 1, 1, 5, 5, 1, 1, 1, 1, 1, u, u, u);
        p_RandomStreaks(width, height, 1, 5, 5, 1, 1, 1, 1, 1, 1, u, u, u);
        xBubbleShadow(width, height, 1, 1, 5, 1, 1, 1, u, u, u);
        xFillPoly4_p(corners.data(), u, u, u, 5, 5, u, u, u, width, height, 1, 1);
        xInitMarquee(u, u, width, height, 1, 2, 1, 1);
        GoodTransform2(u, u, u, u, u, u, u, 5, 5, width, height, f, 0, 1);
        xErodeBlock(width, height, f, 0, 0, 32, 32, 8, 9, 9, 1, std::array<float, 8>{}.data());
        xApply_Physics(f, width, f);
        Render3DHelper(&triangle, nullptr, width, 5, 5, 0, 1);
        Render3DHelper2(&triangle, nullptr, 5, width, 5, 1);
    }
}

TEST(Frame, MemoryOfPictures) {
    EXPECT_EQ(CalcMem(1024, 1024, 1), 3);
    EXPECT_EQ(CalcMem(1000, 1000, 1), 2);
    EXPECT_EQ(CalcMem(100, 100, 1), 0);
    EXPECT_EQ(CalcMem(-1024, 1024, 1), -3);
    EXPECT_EQ(CalcMem(65536, 65536, 2), 24576);
    EXPECT_EQ(CalcMem(1 << 30, 1 << 30, 1 << 30), lowest);
}

TEST(Frame, MemoryOfTheSystem) {
    std::array<int32_t, 4> memory = {-1, -1, -1, -1};
    MemoryInfo(&memory[0], &memory[1], &memory[2], &memory[3]);
    const auto [available, total, available_page_file, total_page_file] = memory;
    EXPECT_GT(available, 0);
    EXPECT_GT(available_page_file, 0);
#if defined(_WIN32)
    MEMORYSTATUSEX status;
    status.dwLength = sizeof status;
    ASSERT_TRUE(GlobalMemoryStatusEx(&status));
    EXPECT_EQ(total, static_cast<int32_t>(status.ullTotalPhys / 1024));
    EXPECT_EQ(total_page_file, static_cast<int32_t>(status.ullTotalPageFile / 1024));
#else
    EXPECT_EQ(total, sysconf(_SC_PHYS_PAGES) * (sysconf(_SC_PAGESIZE) / 1024));
    EXPECT_LT(available, total);
    EXPECT_GE(total_page_file, total);
    EXPECT_GE(total_page_file, available_page_file);
#endif
}

const BulkCase cases[] = {
    {"TestPPL2", [](Workspace &w) { TestPPL2(w.buffer(), w.height, w.width); }},
};

const BulkFamily family("Frame", cases);

} // namespace
