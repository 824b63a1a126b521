#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <new>
#include <span>

#include "tavik/frame/elementary.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/lighting/height_field.h"
#include "tavik/lighting/lighting.h"

namespace {

using namespace tavik;

// So many pixels to the right and down, and what a height there weighs.
struct HorizonStep {
    int32_t right, down;
    float weight;
};

constexpr int32_t occlusion_run = 512;

} // namespace

#define TAVIK_ROWS "tavik/lighting/occlusion_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

template <class Height>
using OcclusionRow = void(const HeightField<Height> &field, std::span<const HorizonStep> steps, int32_t first,
                          int32_t y, float *sum, int32_t count);
template <class Visibility> using OpennessRow = void(const float *sum, float share, Visibility *dst, std::size_t count);

constexpr PerLevel<OcclusionRow<float>> add_occlusion_of_floats = TAVIK_EVERY_LEVEL(add_occlusion_of_floats);
constexpr PerLevel<OcclusionRow<uint8_t>> add_occlusion_of_bytes = TAVIK_EVERY_LEVEL(add_occlusion_of_bytes);
constexpr PerLevel<OpennessRow<float>> show_openness = TAVIK_EVERY_LEVEL(show_openness);
constexpr PerLevel<OpennessRow<uint8_t>> show_openness_in_bytes = TAVIK_EVERY_LEVEL(show_openness_in_bytes);
constexpr PerLevel<void(const float *sum, float per_sum, uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count)>
    darken = TAVIK_EVERY_LEVEL(darken);

// The steps of several directions, one after another.
class Horizon {
  public:
    Horizon(int32_t radius, int32_t steps, float scale) : radius_(radius), steps_(steps), scale_(scale) {}

    // False when there is no memory.
    bool reserve(int32_t directions) {
        const std::size_t most = element_count(directions) * element_count(steps_);
        memory_.reset(new (std::nothrow) HorizonStep[most]);
        starts_.reset(new (std::nothrow) std::size_t[element_count(directions) + 1]);
        if (!memory_ || !starts_) return false;
        starts_[0] = 0;
        return true;
    }

    void add_direction(float turns) {
        const float cosine = cos_turn(turns);
        const float sine = sin_turn(turns);
        const auto radius = static_cast<float>(radius_);
        const float fade = 1.0F / ((radius + 1.0F) * (radius + 1.0F));
        std::size_t end = starts_[directions_];
        for (int32_t j = 1; j <= steps_; ++j) {
            const float distance = (radius * static_cast<float>(j)) / static_cast<float>(steps_);
            const int32_t right = floor_to_int(cosine * distance + 0.5F);
            const int32_t down = floor_to_int(sine * distance + 0.5F);
            if (right == 0 && down == 0) continue;
            const auto x = static_cast<float>(right);
            const auto y = static_cast<float>(down);
            const float square = x * x + y * y;
            memory_[end++] = {right, down, (scale_ / std::sqrt(square)) * clamp(1.0F - square * fade, 0.0F, 1.0F)};
        }
        starts_[++directions_] = end;
    }

    std::size_t directions() const { return directions_; }
    std::span<const HorizonStep> operator[](std::size_t direction) const {
        return {memory_.get() + starts_[direction], starts_[direction + 1] - starts_[direction]};
    }

  private:
    int32_t radius_, steps_;
    float scale_;
    std::unique_ptr<HorizonStep[]> memory_;
    std::unique_ptr<std::size_t[]> starts_;
    std::size_t directions_ = 0;
};

// Calls body(x, y, count, at) for runs of pixels in parallel rows, each worth `cost` light elements a pixel.
template <class Body> void for_each_run(int32_t width, int32_t height, std::size_t cost, const Body &body) {
    if (width <= 0) return;
    const auto light = static_cast<int32_t>(std::min<std::size_t>(cost, light_grain));
    parallel_for(0, height, std::max(row_grain(width) / std::max(light, 1), 1), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y)
            for (int32_t x = 0; x < width; x += occlusion_run)
                body(x, y, std::min(occlusion_run, width - x), static_cast<std::size_t>(y) * element_count(width) + x);
    });
}

template <class Height>
void occlude(const PerLevel<OcclusionRow<Height>> &add, const PerLevel<OpennessRow<Height>> &show, int32_t width,
             int32_t height, const Height *heights, int32_t directions, int32_t radius, int32_t steps, float scale,
             Height *dst) {
    Horizon horizon(radius, steps, scale);
    if (!horizon.reserve(directions)) return;
    for (int32_t i = 0; i < directions; ++i)
        horizon.add_direction(static_cast<float>(i) / static_cast<float>(directions));
    const float share = 1.0F / static_cast<float>(directions);
    const HeightField<Height> field = {heights, width, height};
    const std::size_t cost = element_count(directions) * element_count(steps);
    for_each_run(width, height, cost, [&](int32_t x, int32_t y, int32_t count, std::size_t at) {
        std::array<float, occlusion_run> sum;
        std::fill_n(sum.begin(), count, 0.0F);
        for (std::size_t i = 0; i < horizon.directions(); ++i) add.active()(field, horizon[i], x, y, sum.data(), count);
        show.active()(sum.data(), share, dst + at, element_count(count));
    });
}

} // namespace

TAVIK_EXPORT(void)
xOcclusionAdder(int32_t width, int32_t height, const float *heights, float degrees, int32_t radius, int32_t steps,
                float scale, float *sum) {
    Horizon horizon(radius, steps, scale);
    if (!horizon.reserve(1)) return;
    horizon.add_direction(degrees_to_turns(degrees));
    const HeightField<float> field = {heights, width, height};
    for_each_run(width, height, element_count(steps), [&](int32_t x, int32_t y, int32_t count, std::size_t at) {
        add_occlusion_of_floats.active()(field, horizon[0], x, y, sum + at, count);
    });
}

TAVIK_EXPORT(void)
xOcclusionBlender(int32_t width, int32_t height, const float *sum, int32_t passes, float amount, uint8_t *plane_r,
                  uint8_t *plane_g, uint8_t *plane_b) {
    const float per_sum = amount / static_cast<float>(passes);
    const FetchAhead planes(counts(width, height), sum, plane_r, plane_g, plane_b);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        darken.active()(sum + i, per_sum, plane_r + i, plane_g + i, plane_b + i, n);
    });
}

TAVIK_EXPORT(void)
CPUxDoOcclusion_f(int32_t width, int32_t height, const float *heights, int32_t directions, int32_t radius,
                  int32_t steps, float scale, float *dst) {
    occlude(add_occlusion_of_floats, show_openness, width, height, heights, directions, radius, steps, scale, dst);
}

TAVIK_EXPORT(void)
xDoOcclusion(int32_t width, int32_t height, const uint8_t *heights, int32_t directions, int32_t radius, int32_t steps,
             float scale, uint8_t *dst) {
    occlude(add_occlusion_of_bytes, show_openness_in_bytes, width, height, heights, directions, radius, steps, scale,
            dst);
}
