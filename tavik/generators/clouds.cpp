#include "tavik/generators/generators.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <type_traits>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/paint/disc.h"

using namespace tavik;

namespace {

struct Particle {
    float x;
    float y;
    float z;
    float size;
    float opacity;
    std::array<float, 3> of_host_first;
    std::array<float, 3> colour;
    std::array<float, 7> of_host_last;
};
static_assert(sizeof(Particle) == 72);

struct Camera {
    float x;
    float y;
    float z;
    float zoom;
    float near;
};

template <class Record> Record read_record(const float *floats) {
    Record record;
    std::memcpy(&record, floats, sizeof record);
    return record;
}

// Where a puff is drawn in a picture of upper bounds.
struct View {
    Camera camera;
    int32_t x_max;
    int32_t y_max;

    std::optional<Disc> project(const Particle &particle, bool fades) const {
        if (!(particle.y > camera.y + camera.near)) return std::nullopt;
        const float depth = (particle.y - camera.y) * camera.zoom * 0.0005F;
        const float inverse = depth == 0.0F ? 0.0F : 1.0F / depth;
        const auto on_screen = [&](float offset, int32_t bound) {
            const int32_t middle = bound / 2;
            return static_cast<float>(truncate(inverse * offset + static_cast<float>(middle)));
        };
        const float half = particle.size * inverse * 0.5F;
        if (!(half > 0.0F && half < 1000.0F)) return std::nullopt;
        Disc disc = {.cx = on_screen(particle.x - camera.x, x_max),
                     .cy = on_screen(particle.z - camera.z, y_max),
                     .radius = static_cast<float>(truncate(half * 0.5F)),
                     .feather = static_cast<float>(truncate(particle.size * inverse * 0.25F)),
                     .colour = particle.colour,
                     .opacity = clamp_nan_high(particle.opacity, 0.0F, 1.0F)};
        for (float &component : disc.colour) component = clamp_nan_high(component, 0.0F, 255.0F);
        if (fades) {
            disc.opacity *= clamp_nan_high((particle.y - camera.y - 50.0F) * 0.01F, 0.0F, 1.0F);
            const bool off_screen = disc.cx + half < 0.0F || disc.cy + half < 0.0F ||
                                    disc.cx - half > static_cast<float>(x_max) ||
                                    disc.cy - half > static_cast<float>(y_max);
            if (off_screen || disc.opacity <= 0.0F) return std::nullopt;
        }
        return disc;
    }
};

struct Puff {
    Disc disc;
    Box box;
};

// Puffs are drawn in batches: bands of rows are spread over threads, and each band takes the puffs in their order.
class Batch {
  public:
    bool full() const { return size == puffs.size(); }

    void add(const Disc &disc, const Box &box) {
        puffs[size++] = {disc, box};
        top = std::min(top, box.top);
        bottom = std::max(bottom, box.bottom);
        pixels += int64_t{box.right - box.left} * (box.bottom - box.top);
    }

    template <class Sample> void draw(const PerLevel<PaintDisc<Sample>> &replace, const Canvas<Sample> &canvas) const {
        if (size == 0) return;
        const int64_t rows = bottom - top;
        const auto grain =
            static_cast<int32_t>(std::clamp<int64_t>(rows * light_grain / std::max<int64_t>(pixels, 1), 1, rows));
        parallel_for(top, bottom, grain, [&](int32_t begin, int32_t end) {
            for (std::size_t i = 0; i < size; ++i) {
                Box band = puffs[i].box;
                band.top = std::max(band.top, begin);
                band.bottom = std::min(band.bottom, end);
                paint_box(replace.active(), puffs[i].disc, band, canvas);
            }
        });
    }

  private:
    std::array<Puff, 512> puffs;
    std::size_t size = 0;
    int32_t top = std::numeric_limits<int32_t>::max();
    int32_t bottom = 0;
    int64_t pixels = 0;
};

template <class Sample>
void render(const PerLevel<PaintDisc<Sample>> &replace, const float *particles, int32_t count, const View &view,
            const Canvas<Sample> &canvas) {
    int32_t next = 0;
    while (next < count) {
        Batch batch;
        for (; next < count && !batch.full(); ++next) {
            const auto particle = read_record<Particle>(particles + std::size_t{18} * static_cast<std::size_t>(next));
            const auto disc = view.project(particle, std::is_same_v<Sample, float>);
            if (!disc) continue;
            const Box box = box_of(*disc, view.x_max, view.y_max, RowBelow::excluded);
            if (!box.empty()) batch.add(*disc, box);
        }
        batch.draw(replace, canvas);
    }
}

} // namespace

TAVIK_EXPORT(void)
xRenderCloud(const float *particles, const float *camera, int32_t count, int32_t x_max, int32_t y_max, uint8_t *dst0,
             uint8_t *dst1, uint8_t *dst2) {
    render<uint8_t>(replace_bytes, particles, count, {read_record<Camera>(camera), x_max, y_max},
                    {x_max, {dst0, dst1, dst2}});
}

TAVIK_EXPORT(void)
xRenderCloud_float(const float *particles, const float *camera, int32_t count, int32_t x_max, int32_t y_max,
                   float *dst0, float *dst1, float *dst2) {
    render<float>(replace_floats, particles, count, {read_record<Camera>(camera), x_max, y_max},
                  {x_max, {dst0, dst1, dst2}});
}
