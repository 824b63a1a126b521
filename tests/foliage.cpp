#include "tavik/foliage/foliage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/frame/hash.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Pool = Floats;
using Row = std::vector<int>;
using Emitter = std::array<float, 24>;
using Physics = std::array<float, 8>;
constexpr std::size_t words = 20;

int32_t state_of(const Pool &pool, std::size_t index) { return std::bit_cast<int32_t>(pool[words * index + 19]); }

constexpr Emitter still = {10, 20, 10, 20, 3, 3, -90, 0, 2, 2, 8, 8, 1.5F, 1.5F, 10, 20, 30, 200, 300, -5};
constexpr Physics falling = {0, 0.5F, 0, 0, 0, 0, 0, 1};
constexpr Emitter meadow = {0, 20, 40, 44, 40, 10, -90, 40, 1, 3, 4, 9, 0.5F, 2.5F, 20, 90, 30, 160, 220, 60, 0.5F};
constexpr Physics windy = {0, 0.05F, 0.3F, 0, 0.2F, 1.5F, 0.05F, 1};

// Black planes before a background at this depth.
struct Canvas {
    int32_t width, height;
    Planes planes;
    Floats depth;

    Canvas(int32_t columns, int32_t rows, float background)
        : width(columns), height(rows), depth(static_cast<std::size_t>(columns * rows), background) {
        planes.fill(Bytes(depth.size()));
    }
    tavik_foliage_target target() { return record<tavik_foliage_target>(width, height, planes, depth); }
    Row row(int32_t y) const { return {planes[0].begin() + y * width, planes[0].begin() + (y + 1) * width}; }
    bool operator==(const Canvas &) const = default;
};

TEST(Foliage, EmitsIntoTheFirstFreeRecord) {
    Pool pool(3 * words);
    for (const int32_t expected : {0, 1, 2, -1}) EXPECT_EQ(xEmmit_particle(pool.data(), 3, still.data(), 7), expected);
    const Pool first(pool.begin(), pool.begin() + words - 2);
    EXPECT_EQ(first, (Pool{10, 20, 3, 10, 20, 3, 0, -2, 0, 0, 8, 1.5F, 10, 20, 30, 200, 255, 0}));
    EXPECT_EQ(state_of(pool, 0), 1);
    EXPECT_TRUE(std::equal(pool.begin(), pool.begin() + 2 * words, pool.begin() + words)) << "of the same seed";

    // Everything drawn, within its bounds and all different.
    Pool one(words);
    xEmmit_particle(one.data(), 1, meadow.data(), 7);
    const auto draw = [](uint32_t i) { return tavik::unit(tavik::hash(i + tavik::hash(7))); };
    EXPECT_EQ(one[0], 40 * draw(0));
    EXPECT_EQ(one[1], 24 * draw(1) + 20);
    EXPECT_EQ(one[2], -30 * draw(1) + 40);
    EXPECT_EQ(one[10], 5 * draw(4) + 4);
    EXPECT_EQ(one[11], 2 * draw(5) + 0.5F);
    EXPECT_EQ(one[13], 90 * (1 + (draw(6) - 0.5F) * 0.5F));
    EXPECT_EQ(one[18], draw(7));
    const double heading = (-90 + (double{draw(2)} - 0.5) * 40) * 0.017453292519943295;
    EXPECT_NEAR(one[6], (2 * draw(3) + 1) * std::cos(heading), 1e-5);
    EXPECT_NEAR(one[7], (2 * draw(3) + 1) * std::sin(heading), 1e-5);
}

TEST(Foliage, PhysicsMovesEndsAndFrees) {
    Pool pool(2 * words);
    xEmmit_particle(pool.data(), 2, still.data(), 7);
    xApply_Physics(pool.data(), 2, falling.data());
    EXPECT_EQ(pool[1], 18.5F);
    EXPECT_EQ(pool[7], -1.5F);
    EXPECT_EQ(pool[4], 20);
    EXPECT_EQ(pool[9], 1);
    for (int32_t step = 1; step < 8; ++step) {
        EXPECT_EQ(state_of(pool, 0), 1);
        xApply_Physics(pool.data(), 2, falling.data());
    }
    EXPECT_EQ(state_of(pool, 0), 2);
    const Pool finished = pool;
    xApply_Physics(pool.data(), 2, falling.data());
    EXPECT_EQ(state_of(pool, 0), 0);
    EXPECT_TRUE(std::equal(pool.begin(), pool.begin() + 19, finished.begin()));
    EXPECT_EQ(Pool(pool.begin() + words, pool.end()), Pool(words));

    // Drag towards the wind, and gusts by the particle's age and phase.
    Pool blown = {0, 0, 5, 9, 9, 9, 2, -4, 3, 2, 100, 1, 0, 0, 0, 0, 0, 0, 0.15F, std::bit_cast<float>(1)};
    xApply_Physics(blown.data(), 1, Physics{0.5F, 0.25F, 6, 4, 0.5F, 2, 0.05F, 0.5F}.data());
    EXPECT_EQ(Pool(blown.begin(), blown.begin() + 10),
              (Pool{1.875F, -0.9375F, 6.5F, 0, 0, 5, 3.75F, -1.875F, 3, 2.5F}));
}

TEST(Foliage, NextPassesOverFreeRecords) {
    Pool pool(4 * words);
    EXPECT_EQ(Foliage_NextParticle(pool.data(), 4, -1), -1);
    pool[2 * words + 19] = std::bit_cast<float>(2);
    for (const auto &[index, next] : {std::array{-1, 2}, {1, 2}, {2, -1}, {3, -1}, {9, -1}})
        EXPECT_EQ(Foliage_NextParticle(pool.data(), 4, index), next);
}

TEST(Foliage, StrokesTaperShadeAndHide) {
    Canvas dabbed(9, 9, 100);
    const auto target = dabbed.target();
    foliage_xpen(&target, 4, 4, 10, 2, 200, 0, 0, 1);
    EXPECT_EQ(dabbed.row(4), (Row{0, 0, 76, 188, 200, 188, 76, 0, 0}));
    EXPECT_EQ(Floats(&dabbed.depth[36], &dabbed.depth[45]), (Floats{100, 100, 10, 10, 10, 10, 10, 100, 100}));
    foliage_xpen(&target, 4, 4, 20, 2, 200, 0, 0, 1);
    EXPECT_EQ(dabbed.row(4), (Row{0, 0, 76, 188, 200, 188, 76, 0, 0})) << "behind what is drawn";
    foliage_xpen(&target, 4, 4, 10, 2, 0, 0, 0, 1);
    EXPECT_EQ(dabbed.row(4)[4], 0) << "at an equal depth";

    Canvas lined(9, 9, 100);
    const auto line_target = lined.target();
    const float from[] = {1, 4, 10, 1, 100, 0, 0};
    const float to[] = {7, 4, 20, 0, 200, 0, 0};
    foliage_zLine(&line_target, from, to, 1);
    EXPECT_EQ(lined.row(4), (Row{42, 100, 117, 133, 150, 139, 122, 100, 0}));
    EXPECT_EQ(lined.depth[40], 15);
}

TEST(Foliage, GrowingEmitsMovesAndDraws) {
    constexpr int32_t capacity = 30;
    Canvas canvas(40, 48, 100);
    std::fill(canvas.depth.begin(), canvas.depth.begin() + 30 * 40, 1.0F); // nearer than any blade
    Pool pool(capacity * words);
    const auto grow = [&](int32_t emit_per_step, int32_t steps) {
        const auto target = canvas.target();
        return xFoliage_Process(&target, pool.data(), capacity, meadow.data(), windy.data(), emit_per_step, steps, 5,
                                0.75F);
    };
    const Canvas black = canvas;
    EXPECT_EQ(grow(3, 0), 0);
    EXPECT_EQ(grow(0, 4), 0);
    EXPECT_EQ(canvas, black);

    const int32_t left = grow(5, 12);
    EXPECT_EQ(folded(canvas.planes), 0x77227571U);
    EXPECT_EQ(folded(canvas.depth), 0x1173005EU);
    EXPECT_EQ(folded(pool), 0x4493DDD8U);
    EXPECT_TRUE(
        std::all_of(canvas.planes[1].begin(), canvas.planes[1].begin() + 30 * 40, [](int v) { return v == 0; }));
    int32_t growing = 0;
    for (std::size_t i = 0; i < capacity; ++i) growing += state_of(pool, i) == 1 ? 1 : 0;
    EXPECT_EQ(left, growing);
    EXPECT_GT(left, 0);
}

tavik_foliage_target target_of(Workspace &w) {
    return record<tavik_foliage_target>(w.width, w.height, w.buffers(), w.floats(w.count(), 10, 60));
}

std::array<float, 7> any_end(Workspace &w) {
    return {w.hostile(-9, static_cast<float>(w.width + 9)),
            w.hostile(-9, static_cast<float>(w.height + 9)),
            w.hostile(0, 40),
            w.hostile(0, 9),
            w.hostile(0, 255),
            200,
            w.real(0, 255)};
}

template <std::size_t size> float *placed(Workspace &w, const std::array<float, size> &values) {
    auto *start = w.buffer<float>(size);
    std::copy(values.begin(), values.end(), start);
    return start;
}

const BulkCase cases[] = {
    {"foliage_zLine",
     [](Workspace &w) {
         const auto target = target_of(w);
         for (int32_t i = 0; i < 12; ++i)
             foliage_zLine(&target, placed(w, any_end(w)), placed(w, any_end(w)), w.hostile(0, 1));
     }},
    {"foliage_xpen",
     [](Workspace &w) {
         const auto target = target_of(w);
         for (int32_t i = 0; i < 12; ++i) {
             call(foliage_xpen, &target, any_end(w), w.hostile(0, 1));
         }
     }},
    {"xEmmit_particle",
     [](Workspace &w) {
         const int32_t capacity = w.width;
         auto *pool = w.buffer<uint32_t>(words * static_cast<std::size_t>(capacity));
         for (int32_t i = 0; i < capacity; ++i) pool[20 * i + 19] %= 2;
         auto *places = w.result<int32_t>(9);
         for (int32_t i = 0; i < 9; ++i)
             places[i] = xEmmit_particle(reinterpret_cast<float *>(pool), capacity, placed(w, meadow), i);
     }},
    {"Foliage_NextParticle",
     [](Workspace &w) {
         auto *pool = w.buffer<uint32_t>(words * static_cast<std::size_t>(w.width));
         for (int32_t i = 0; i < w.width; ++i) pool[20 * i + 19] %= 2;
         auto *next = w.result<int32_t>(static_cast<std::size_t>(w.width) + 1);
         for (int32_t i = -1; i < w.width; ++i)
             next[i + 1] = Foliage_NextParticle(reinterpret_cast<float *>(pool), w.width, i);
     }},
    // Records of any bits: of any state, too.
    {"xApply_Physics",
     [](Workspace &w) {
         const int32_t count = std::min(w.width * w.height, 9000);
         auto *pool = w.buffer<uint32_t>(words * static_cast<std::size_t>(count));
         for (int32_t i = 0; i < count; ++i) pool[20 * i + 19] %= 5;
         for (int32_t i = 0; i < count; i += 3)
             xEmmit_particle(reinterpret_cast<float *>(pool), count, meadow.data(), i);
         xApply_Physics(reinterpret_cast<float *>(pool), count, placed(w, windy));
     }},
    {"xFoliage_Process",
     [](Workspace &w) {
         const auto target = target_of(w);
         constexpr int32_t capacity = 20;
         float *pool = w.floats(words * capacity, 0, 30);
         for (std::size_t i = 0; i < capacity; ++i) pool[words * i + 19] = std::bit_cast<float>(w.integer(0, 3));
         Emitter emitter = meadow;
         Physics physics = windy;
         for (float &value : emitter) value = w.hostile(value, value);
         for (float &value : physics) value = w.hostile(value, value);
         emitter[2] = static_cast<float>(w.width);
         emitter[3] = static_cast<float>(w.height);
         xFoliage_Process(&target, pool, capacity, placed(w, emitter), placed(w, physics), 3, 6, w.integer(0, 99),
                          0.8F);
     }},
};

const BulkFamily family("Foliage", cases);

} // namespace
