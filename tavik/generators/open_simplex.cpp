#include <array>

#include "tavik/frame/bytes.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

namespace {

// Samples of a row that are worked on at once.
constexpr std::size_t run = 128;

// Each sample is the sum of four lattice points' contributions.
constexpr std::size_t points = 4;

constexpr double squish = 0.366025403784439;

// Where the samples of a run lie in the lattice. Steps are lattice steps from the base of a sample's rhombus.
struct LatticePlaces {
    std::array<double, run> base_x;
    std::array<double, run> base_y;
    // Offsets from the base.
    std::array<double, run> dx;
    std::array<double, run> dy;
    // The third point is the base or one step from it along both axes.
    std::array<double, run> third_step;
    // The extra point.
    std::array<double, run> extra_step_x;
    std::array<double, run> extra_step_y;
    // Lattice coordinates of each point, modulo 256: those of the first for the whole run, then those of the next.
    std::array<uint8_t, points * run> columns;
    std::array<uint8_t, points * run> rows;
};

} // namespace

#define TAVIK_ROWS "tavik/generators/open_simplex_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(int32_t first_x, double frequency, double scale, double y, LatticePlaces &places,
                        std::size_t count)>
    find_places = TAVIK_EVERY_LEVEL(find_places);
constexpr PerLevel<void(const double *bases, const double *third_steps, const double *extra_steps, bool along_x,
                        uint8_t *coordinates, std::size_t count)>
    find_points = TAVIK_EVERY_LEVEL(find_points);
constexpr PerLevel<void(uint8_t *to, const uint8_t *amounts, std::size_t count)> add_modulo_256 =
    TAVIK_EVERY_LEVEL(add_modulo_256);
constexpr PerLevel<void(const LatticePlaces &places, const uint8_t *gradients_x, const uint8_t *gradients_y,
                        double weight, double *totals, std::size_t count)>
    add_octave = TAVIK_EVERY_LEVEL(add_octave);
constexpr PerLevel<void(const double *totals, uint8_t *dst, std::size_t count)> levels_of_totals =
    TAVIK_EVERY_LEVEL(levels_of_totals);

// The pseudo-random gradients of the lattice points.
class Gradients {
  public:
    explicit Gradients(uint16_t seed) {
        uint64_t state = seed;
        const auto step = [&state] { return state = state * 6364136223846793005U + 1442695040888963407U; };
        for (int i = 0; i < 3; ++i) step();
        ByteTable unused = tabulate([](uint8_t value) { return value; });
        for (int64_t i = 255; i >= 0; --i) {
            int64_t chosen = static_cast<int64_t>(step() + 31) % (i + 1);
            if (chosen < 0) chosen += i + 1;
            uint8_t &value = unused[static_cast<std::size_t>(chosen)];
            permutation[static_cast<std::size_t>(i)] = value;
            value = unused[static_cast<std::size_t>(i)];
        }
        constexpr std::array<int8_t, 16> directions = {5, 2, 2, 5, -5, 2, -2, 5, 5, -2, 2, -5, -5, -2, -2, -5};
        const auto component = [&](std::size_t axis) {
            return tabulate(
                [&](uint8_t value) { return static_cast<uint8_t>(directions[(permutation[value] & 14U) + axis]); });
        };
        components_x = component(0);
        components_y = component(1);
    }

    // The gradients at lattice points as signed bytes; uses up the columns.
    void look_up(uint8_t *columns, const uint8_t *rows, uint8_t *x, uint8_t *y, std::size_t count) const {
        map_bytes.active()(columns, columns, count, permutation.data());
        add_modulo_256.active()(columns, rows, count);
        map_bytes.active()(columns, x, count, components_x.data());
        map_bytes.active()(columns, y, count, components_y.data());
    }

  private:
    ByteTable permutation;
    // Of the gradient of each hash.
    ByteTable components_x;
    ByteTable components_y;
};

class FractalNoise {
  public:
    FractalNoise(uint16_t seed, int32_t period, int32_t octave_count)
        : gradients(seed), scale(1.0 / period), octaves(octave_count) {}

    void write_run(int32_t first_x, int32_t y, uint8_t *dst, std::size_t count) const {
        std::array<double, run> totals = {};
        std::array<uint8_t, points * run> gradients_x;
        std::array<uint8_t, points * run> gradients_y;
        LatticePlaces places;
        double weight = 1.0;
        for (int32_t octave = 1; octave <= octaves; ++octave) {
            const double frequency = octave;
            find_places.active()(first_x, frequency, scale, y * frequency * scale, places, count);
            find_points.active()(places.base_x.data(), places.third_step.data(), places.extra_step_x.data(), true,
                                 places.columns.data(), count);
            find_points.active()(places.base_y.data(), places.third_step.data(), places.extra_step_y.data(), false,
                                 places.rows.data(), count);
            gradients.look_up(places.columns.data(), places.rows.data(), gradients_x.data(), gradients_y.data(),
                              points * count);
            add_octave.active()(places, gradients_x.data(), gradients_y.data(), weight, totals.data(), count);
            weight *= 0.5;
        }
        levels_of_totals.active()(totals.data(), dst, count);
    }

  private:
    Gradients gradients;
    double scale;
    int32_t octaves;
};

} // namespace

TAVIK_EXPORT(void) xOpenSimplex(int32_t width, int32_t height, int32_t period, int32_t octaves, uint8_t *dst) {
    uint16_t seed;
    draw_random(&seed, 1);
    if (width <= 0 || height <= 0) return;
    const FractalNoise noise(seed, period, octaves);
    const std::size_t stride = element_count(width);
    // An octave costs about as much as ten light elements.
    const int32_t grain = std::max(row_grain(width) / 10 / std::max(octaves, 1), 1);
    parallel_for(0, height, grain, [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y)
            for (std::size_t x = 0; x < stride; x += run)
                noise.write_run(static_cast<int32_t>(x), y, dst + static_cast<std::size_t>(y) * stride + x,
                                std::min(run, stride - x));
    });
}
