#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/hash.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/sampling.h"
#include "tavik/lighting/lighting.h"

using namespace tavik;

namespace {

// Columns or rows [begin, end).
struct Span {
    int32_t begin, end;

    bool empty() const { return begin >= end; }
    int32_t count() const { return end - begin; }
    bool holds(int32_t i) const { return i >= begin && i < end; }
};

struct Field {
    float *heights;
    int32_t width, height;

    float *at(int32_t x, int32_t y) const {
        return heights + static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + x;
    }
};

struct Settings {
    float inertia, capacity, least_drop, erosion, deposition, evaporation, gravity;
    int32_t radius;

    explicit Settings(const float *s)
        : inertia(s[0]),
          capacity(s[1]),
          least_drop(s[2]),
          erosion(s[3]),
          deposition(s[4]),
          evaporation(s[5]),
          gravity(s[6]),
          radius(std::clamp(truncate(s[7]), 1, largest_radius)) {}

    static constexpr int32_t largest_radius = 8;
};

// Spreads an amount over the cells around one, less the farther away.
class Brush {
  public:
    explicit Brush(int32_t radius) : radius_(radius), side_(2 * radius + 1) {
        float total = 0;
        std::size_t cell = 0;
        for (int32_t j = -radius; j <= radius; ++j) {
            for (int32_t i = -radius; i <= radius; ++i) {
                const auto square = static_cast<float>(i * i + j * j);
                const float weight = static_cast<float>(radius) - std::sqrt(square);
                weights_[cell] = weight > 0 ? weight : 0.0F;
                total += weights_[cell++];
            }
        }
        per_total_ = 1.0F / total;
    }

    void add(const Field &field, int32_t x, int32_t y, float amount) const { apply<1>(field, x, y, amount); }
    void subtract(const Field &field, int32_t x, int32_t y, float amount) const { apply<-1>(field, x, y, amount); }

  private:
    template <int sign> void apply(const Field &field, int32_t x, int32_t y, float amount) const {
        const float share = amount * per_total_;
        const float *weight = weights_.data();
        for (int32_t j = -radius_; j <= radius_; ++j) {
            float *row = field.at(x - radius_, y + j);
            for (int32_t i = 0; i < side_; ++i) {
                const float part = share * *weight++;
                row[i] = sign > 0 ? row[i] + part : row[i] - part;
            }
        }
    }

    static constexpr std::size_t largest_side = 2 * Settings::largest_radius + 1;
    int32_t radius_, side_;
    std::array<float, largest_side * largest_side> weights_;
    float per_total_;
};

// The place of a droplet: a cell and the part of it to the right and below.
struct Place {
    int32_t x, y;
    float part_x, part_y;

    float height(const Field &field) const {
        const float *upper = field.at(x, y);
        const float *lower = upper + field.width;
        return lerp4(upper[0], upper[1], lower[0], lower[1], part_x, part_y);
    }
};

// Where the droplets of a block may go, and where all droplets may.
struct Bounds {
    Span columns, rows;
    Span plane_columns, plane_rows;
};

// Runs down the slope for so many steps, taking material with it where it is fast and leaving it where it is slow.
void run_droplet(const Field &field, const Settings &settings, const Brush &brush, const Bounds &bounds, float x,
                 float y, Place place, int32_t life) {
    float direction_x = 0;
    float direction_y = 0;
    float speed = 1;
    float water = 1;
    float load = 0;
    for (int32_t step = 0; step < life; ++step) {
        float *upper = field.at(place.x, place.y);
        float *lower = upper + field.width;
        const float right = place.part_x;
        const float down = place.part_y;
        const float left = 1.0F - right;
        const float up = 1.0F - down;
        const float slope_x = (upper[1] - upper[0]) * up + (lower[1] - lower[0]) * down;
        const float slope_y = (lower[0] - upper[0]) * left + (lower[1] - upper[1]) * right;
        const float old = place.height(field);
        const float yielding = 1.0F - settings.inertia;
        direction_x = direction_x * settings.inertia - slope_x * yielding;
        direction_y = direction_y * settings.inertia - slope_y * yielding;
        const float length = std::sqrt(direction_x * direction_x + direction_y * direction_y);
        if (!(length > 1e-6F)) break;
        direction_x /= length;
        direction_y /= length;

        x += direction_x;
        y += direction_y;
        const int32_t next_x = floor_to_int(x);
        const int32_t next_y = floor_to_int(y);
        if (!bounds.columns.holds(next_x) || !bounds.rows.holds(next_y)) {
            const bool left_the_plane = !bounds.plane_columns.holds(next_x) || !bounds.plane_rows.holds(next_y);
            if (left_the_plane) load = 0;
            break;
        }
        const Place next = {next_x, next_y, x - static_cast<float>(next_x), y - static_cast<float>(next_y)};
        const float rise = next.height(field) - old;
        const float steep = -rise > settings.least_drop ? -rise : settings.least_drop;
        const float room = ((steep * speed) * water) * settings.capacity;
        if (rise > 0 || load > room) {
            const float amount = rise > 0 ? (rise < load ? rise : load) : (load - room) * settings.deposition;
            load -= amount;
            upper[0] += amount * (left * up);
            upper[1] += amount * (right * up);
            lower[0] += amount * (left * down);
            lower[1] += amount * (right * down);
        } else {
            const float wanted = (room - load) * settings.erosion;
            const float amount = wanted < -rise ? wanted : -rise;
            load += amount;
            brush.subtract(field, place.x, place.y, amount);
        }
        const float energy = speed * speed - rise * settings.gravity;
        speed = std::sqrt(energy > 0 ? energy : 0.0F);
        water = water * (1.0F - settings.evaporation);
        place = next;
    }
    brush.add(field, place.x, place.y, load);
}

struct Block {
    Span columns, rows;
    int32_t margin;
};

// The cells of one axis that droplets from a block's span may enter, and those that they start in.
struct Reach {
    Span cells, starts;

    Reach(Span block, int32_t margin, int32_t size, int32_t radius) {
        const auto inside = [size](int64_t i) { return static_cast<int32_t>(std::clamp<int64_t>(i, 0, size)); };
        const Span window = {inside(int64_t{block.begin} - margin), inside(int64_t{block.end} + margin)};
        cells = {window.begin + radius, window.end - 1 - radius};
        starts = {std::max(block.begin, cells.begin), std::min(block.end, cells.end)};
    }
};

void erode_block(const Field &field, const Settings &settings, const Brush &brush, const Block &block, int64_t droplets,
                 int32_t life, uint32_t seed) {
    const int32_t radius = settings.radius;
    const Reach across(block.columns, block.margin, field.width, radius);
    const Reach down(block.rows, block.margin, field.height, radius);
    if (across.starts.empty() || down.starts.empty()) return;
    const Bounds bounds = {
        across.cells, down.cells, {radius, field.width - 1 - radius}, {radius, field.height - 1 - radius}};
    const uint32_t base = hash(seed);
    const auto start_of = [base](uint32_t number, Span starts) {
        return unit(hash(number + base)) * static_cast<float>(starts.count()) + static_cast<float>(starts.begin);
    };
    for (int64_t k = 0; k < droplets; ++k) {
        const auto number = static_cast<uint32_t>(2 * k);
        const float x = start_of(number, across.starts);
        const float y = start_of(number + 1, down.starts);
        const int32_t column = std::min(truncate(x), across.starts.end - 1);
        const int32_t row = std::min(truncate(y), down.starts.end - 1);
        run_droplet(field, settings, brush, bounds, x, y,
                    {column, row, x - static_cast<float>(column), y - static_cast<float>(row)}, life);
    }
}

// The blocks that cover a plane in one pass.
class Tiling {
  public:
    Tiling(const Field &field, int32_t block_size, int32_t shift)
        : field_(field),
          size_(block_size),
          shift_(shift),
          columns_(blocks_across(field.width)),
          rows_(blocks_across(field.height)) {}

    // Calls body(column, row, block) for the blocks of one of four phases at the same time. Blocks of a phase are so
    // far apart that their windows do not meet.
    template <class Body> void for_each_in_phase(int32_t phase, const Body &body) const {
        const int32_t first_column = phase % 2;
        const int32_t first_row = phase / 2;
        const int32_t across = (columns_ - first_column + 1) / 2;
        const int32_t down = (rows_ - first_row + 1) / 2;
        parallel_for(0, across * down, 1, [&](int32_t begin, int32_t end) {
            for (int32_t i = begin; i < end; ++i) {
                const int32_t column = first_column + 2 * (i % across);
                const int32_t row = first_row + 2 * (i / across);
                body(column, row, Block{span(column), span(row), size_ / 2});
            }
        });
    }

    int64_t area_inside(const Block &block) const {
        const auto inside = [](Span span, int32_t size) {
            return int64_t{std::min(span.end, size)} - std::max(span.begin, 0);
        };
        return inside(block.columns, field_.width) * inside(block.rows, field_.height);
    }

  private:
    int32_t blocks_across(int32_t length) const {
        return static_cast<int32_t>((int64_t{length} + shift_ + size_ - 1) / size_);
    }

    Span span(int32_t index) const { return {index * size_ - shift_, index * size_ - shift_ + size_}; }

    const Field &field_;
    int32_t size_, shift_, columns_, rows_;
};

} // namespace

TAVIK_EXPORT(void)
xErodeBlock(int32_t width, int32_t height, float *heights, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
            int32_t margin, int32_t droplets, int32_t life, int32_t seed, const float *settings) {
    if (width <= 0 || height <= 0) return;
    const Settings held(settings);
    erode_block({heights, width, height}, held, Brush(held.radius), {{x0, x1}, {y0, y1}, margin}, droplets, life,
                static_cast<uint32_t>(seed));
}

TAVIK_EXPORT(void)
xDoErode(int32_t width, int32_t height, float *heights, int32_t block_size, int32_t droplets, int32_t life,
         int32_t passes, int32_t seed, const float *settings) {
    if (width <= 0 || height <= 0) return;
    const Settings held(settings);
    const Brush brush(held.radius);
    const Field field = {heights, width, height};
    const int32_t half = block_size / 2;
    // So that no droplet can leave its window inside the plane.
    const int32_t steps = std::min(life, half - held.radius - 2);
    for (int32_t pass = 0; pass < passes; ++pass) {
        const Tiling tiling(field, block_size, pass % 2 != 0 ? half : 0);
        const uint32_t seed_of_pass = hash(static_cast<uint32_t>(pass) + hash(static_cast<uint32_t>(seed)));
        for (int32_t phase = 0; phase < 4; ++phase) {
            tiling.for_each_in_phase(phase, [&](int32_t column, int32_t row, const Block &block) {
                const int64_t share =
                    int64_t{droplets} * tiling.area_inside(block) / (int64_t{block_size} * block_size);
                erode_block(field, held, brush, block, share, steps,
                            hash(static_cast<uint32_t>(column) + hash(static_cast<uint32_t>(row) + seed_of_pass)));
            });
        }
    }
}
