#include <algorithm>
#include <array>
#include <atomic>

#include "tavik/blockmatch/block.h"
#include "tavik/blockmatch/blockmatch.h"
#include "tavik/frame/parallel_for.h"

namespace {

// Places of a row whose costs are found at a time.
constexpr std::size_t run_places = 256;

struct WeightedBlock {
    const uint8_t *samples;
    const uint8_t *alpha;
    std::size_t stride;
    std::size_t side;
};

} // namespace

#define TAVIK_ROWS "tavik/blockmatch/search_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *reference, const uint8_t *blocks, std::size_t stride, std::size_t count,
                        int32_t *costs)>
    add_block_costs = TAVIK_EVERY_LEVEL(add_block_costs);
constexpr PerLevel<int32_t(const int32_t *costs, std::size_t count)> lowest_of = TAVIK_EVERY_LEVEL(lowest_of);
constexpr PerLevel<void(const WeightedBlock &reference, const uint8_t *plane, const uint8_t *alpha, std::size_t count,
                        int32_t *costs)>
    weighted_costs = TAVIK_EVERY_LEVEL(weighted_costs);

constexpr int64_t reach_16 = 8;

// A place and its cost in one number: the smallest is that of the lowest cost, and of the first place in row order.
class Ranked {
  public:
    constexpr Ranked() : bits(~uint64_t{0}) {}
    constexpr Ranked(int32_t cost, std::size_t index) : bits(static_cast<uint64_t>(cost) << index_bits | index) {}
    explicit constexpr Ranked(uint64_t from) : bits(from) {}

    constexpr bool found() const { return bits != Ranked().bits; }
    constexpr uint64_t number() const { return bits; }

    // Writes where it is in the plane.
    void write(const BlockPlane &plane, int32_t *x, int32_t *y) const {
        const std::size_t index = static_cast<std::size_t>(bits & ((uint64_t{1} << index_bits) - 1));
        *x = static_cast<int32_t>(index % plane.stride());
        *y = static_cast<int32_t>(index / plane.stride());
    }

  private:
    // More than any memory has addresses for; a cost takes up to 18.
    static constexpr int index_bits = 46;

    uint64_t bits;
};

// The places of a search whose blocks are in bounds.
struct Places {
    BlockPlane plane;
    int64_t reach; // of the blocks
    int64_t left, right, top, bottom;

    Places(const BlockPlane &of_plane, int64_t block_reach, int32_t x, int32_t y, int32_t search_size)
        : plane(of_plane),
          reach(block_reach),
          left(std::max(x - int64_t{search_size / 2}, reach)),
          right(std::min(x + int64_t{search_size / 2}, plane.width - reach)),
          top(std::max(y - int64_t{search_size / 2}, reach)),
          bottom(std::min(y + int64_t{search_size / 2}, plane.height - reach)) {}

    bool empty() const { return left >= right || top >= bottom; }

    // Of those in rows [first, last). costs_of_run(block, count, costs) writes the costs of `count` places whose blocks
    // begin at index `block` and on.
    template <class CostsOfRun> Ranked best_of_rows(int64_t first, int64_t last, const CostsOfRun &costs_of_run) const {
        Ranked best;
        int32_t best_cost = not_comparable;
        std::array<int32_t, run_places> costs;
        for (int64_t y = first; y < last; ++y) {
            for (int64_t x = left; x < right; x += run_places) {
                const std::size_t count = std::min(run_places, static_cast<std::size_t>(right - x));
                costs_of_run(plane.start_of_block(x, y, reach), count, costs.data());
                const int32_t lowest = lowest_of.active()(costs.data(), count);
                if (lowest >= best_cost) continue;
                best_cost = lowest;
                const auto place = std::find(costs.begin(), costs.end(), lowest) - costs.begin();
                best = Ranked(lowest, plane.start_of_block(x + place, y, 0));
            }
        }
        return best;
    }

    // The same of all rows, in parallel where a place costs that many light operations.
    template <class CostsOfRun> Ranked best(int64_t operations, const CostsOfRun &costs_of_run) const {
        std::atomic<uint64_t> least = Ranked().number();
        const int64_t width = std::min((right - left) * operations, int64_t{light_grain});
        parallel_for(static_cast<int32_t>(top), static_cast<int32_t>(bottom), row_grain(static_cast<int32_t>(width)),
                     [&](int32_t begin, int32_t end) {
                         const uint64_t own = best_of_rows(begin, end, costs_of_run).number();
                         uint64_t before = least.load(std::memory_order_relaxed);
                         while (own < before && !least.compare_exchange_weak(before, own, std::memory_order_relaxed)) {
                         }
                     });
        return Ranked(least.load(std::memory_order_relaxed));
    }
};

} // namespace

TAVIK_EXPORT(void)
xFindBlock_RGB(int32_t x_ref, int32_t y_ref, int32_t *x, int32_t *y, int32_t search_size, int32_t /*ignored*/,
               int32_t x_max, int32_t y_max, const uint8_t *a1, const uint8_t *a2, const uint8_t *a3, const uint8_t *b1,
               const uint8_t *b2, const uint8_t *b3) {
    const BlockPlane plane = block_plane_to(x_max, y_max);
    const int32_t radius = search_size / 2;
    if (!plane.holds(*x, *y, 0) || radius <= 0) return;
    const Places places(plane, reach_16, *x, *y, search_size);
    if (!plane.holds(x_ref, y_ref, reach_16) || places.empty()) {
        *x -= radius;
        *y -= radius;
        return;
    }
    const std::size_t reference = plane.start_of_block(x_ref, y_ref, reach_16);
    places
        .best_of_rows(places.top, places.bottom,
                      [&](std::size_t block, std::size_t count, int32_t *costs) {
                          std::fill_n(costs, count, 0);
                          const auto add = [&](const uint8_t *a, const uint8_t *b) {
                              add_block_costs.active()(a + reference, b + block, plane.stride(), count, costs);
                          };
                          add(a1, b1);
                          add(a2, b2);
                          add(a3, b3);
                      })
        .write(plane, x, y);
}

TAVIK_EXPORT(void)
xFindBlock_Channel(int32_t *x, int32_t *y, int32_t search_size, int32_t /*ignored*/, int32_t x_max, int32_t y_max,
                   const uint8_t *plane_a, const uint8_t *plane_b) {
    const BlockPlane plane = block_plane_to(x_max, y_max);
    if (!plane.holds(*x, *y, reach_16)) return;
    const Places places(plane, reach_16, *x, *y, search_size);
    if (places.empty()) return;
    const uint8_t *reference = plane_b + plane.start_of_block(*x, *y, reach_16);
    // A place takes a few nanoseconds.
    const Ranked best = places.best(4, [&](std::size_t block, std::size_t count, int32_t *costs) {
        std::fill_n(costs, count, 0);
        add_block_costs.active()(reference, plane_a + block, plane.stride(), count, costs);
    });
    best.write(plane, x, y);
}

TAVIK_EXPORT(void)
xMatchBlockAlf(int32_t x_ref, int32_t y_ref, int32_t *x, int32_t *y, int32_t search_size, int32_t size, int32_t x_max,
               int32_t y_max, const uint8_t *plane_a, const uint8_t *plane_b, const uint8_t *alpha_a,
               const uint8_t *alpha_b) {
    const BlockPlane plane = block_plane_to(x_max, y_max);
    const int64_t half = size / 2;
    if (half <= 0 || !plane.holds(x_ref, y_ref, half)) return;
    const Places places(plane, half, *x, *y, search_size);
    if (places.empty()) return;
    const std::size_t reference = plane.start_of_block(x_ref, y_ref, half);
    const WeightedBlock block_a = {plane_a + reference, alpha_a + reference, plane.stride(),
                                   2 * static_cast<std::size_t>(half)};
    // A sample of a place takes about half a nanosecond.
    const Ranked best = places.best(2 * half * half, [&](std::size_t block, std::size_t count, int32_t *costs) {
        weighted_costs.active()(block_a, plane_b + block, alpha_b + block, count, costs);
    });
    if (best.found()) best.write(plane, x, y);
}
