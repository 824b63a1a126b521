#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/lighting/lighting.h"
#include "tavik/lighting/relief.h"

#define TAVIK_ROWS "tavik/lighting/normals_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const ReliefRows<float> &rows, float scale, float *normals)> write_normals =
    TAVIK_EVERY_LEVEL(write_normals);
constexpr PerLevel<void(const ReliefRows<uint8_t> &rows, float scale, float sign_y, uint8_t *r, uint8_t *g, uint8_t *b)>
    draw_normals = TAVIK_EVERY_LEVEL(draw_normals);

} // namespace

TAVIK_EXPORT(void)
x_F_Convolve_Normals(int32_t width, int32_t height, float scale, const float *heights, float *normals) {
    for_each_relief_row(width, height, heights, [&](const ReliefRows<float> &rows, std::size_t start) {
        write_normals.active()(rows, scale, normals + 3 * start);
    });
}

TAVIK_EXPORT(void)
xNormalMap(int32_t width, int32_t height, float scale, int32_t flip_y, const uint8_t *heights, uint8_t *dst_r,
           uint8_t *dst_g, uint8_t *dst_b) {
    const float sign_y = flip_y != 0 ? -1.0F : 1.0F;
    for_each_relief_row(width, height, heights, [&](const ReliefRows<uint8_t> &rows, std::size_t start) {
        draw_normals.active()(rows, scale, sign_y, dst_r + start, dst_g + start, dst_b + start);
    });
}
