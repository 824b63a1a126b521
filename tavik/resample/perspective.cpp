#include "tavik/frame/elementary.h"
#include "tavik/frame/sampling.h"
#include "tavik/resample/resample.h"

namespace {

using namespace tavik;

// A turned sheet through the middle of the frame: the homography of the frame onto it by the adjugate.
struct Sheet {
    int32_t width, height;
    float middle_x, middle_y;
    float x_end, y_end; // half a sample beyond the last
    float a, b, c, e;
    float p, q, determinant;

    Sheet(int32_t columns, int32_t rows, float degrees_x, float degrees_y, float degrees_z, float distance)
        : width(columns),
          height(rows),
          middle_x((static_cast<float>(columns) - 1.0F) * 0.5F),
          middle_y((static_cast<float>(rows) - 1.0F) * 0.5F),
          x_end(static_cast<float>(columns) - 0.5F),
          y_end(static_cast<float>(rows) - 0.5F) {
        const float sx = sin_turn(degrees_to_turns(degrees_x));
        const float cx = cos_turn(degrees_to_turns(degrees_x));
        const float sy = sin_turn(degrees_to_turns(degrees_y));
        const float cy = cos_turn(degrees_to_turns(degrees_y));
        const float sz = sin_turn(degrees_to_turns(degrees_z));
        const float cz = cos_turn(degrees_to_turns(degrees_z));
        a = cy * cz;
        c = cy * sz;
        b = (sx * sy) * cz - cx * sz;
        e = (sx * sy) * sz + cx * cz;
        const float g = -sy / distance;
        const float h = (sx * cy) / distance;
        determinant = a * e - b * c;
        p = c * h - e * g;
        q = b * g - a * h;
    }
};

} // namespace

#define TAVIK_ROWS "tavik/resample/perspective_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const Sheet &sheet, const PixelRun &run, int32_t *from)> sheet_samples =
    TAVIK_EVERY_LEVEL(sheet_samples);

} // namespace

TAVIK_EXPORT(void)
Fast_ThreeDeePerspective(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                         uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height, float degrees_x,
                         float degrees_y, float degrees_z, float distance, int32_t background) {
    const Sheet sheet(width, height, degrees_x, degrees_y, degrees_z, distance);
    const std::array<const uint8_t *, 3> src = {src_r, src_g, src_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    for_each_run(width, height, [&](const PixelRun &run) {
        std::array<int32_t, sampling_run> from;
        sheet_samples.active()(sheet, run, from.data());
        for (std::size_t plane = 0; plane < 3; ++plane) {
            const uint8_t around = low_byte(background >> (8 * plane));
            for (std::size_t i = 0; i < run.count; ++i)
                dst[plane][run.at + i] = from[i] < 0 ? around : src[plane][from[i]];
        }
    });
}
