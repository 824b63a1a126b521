#include "tavik/colour/colour.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/colour/matrix_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                        uint8_t *dst_g, uint8_t *dst_b, std::size_t count, const float *matrix)>
    multiply_by_matrix = TAVIK_EVERY_LEVEL(multiply_by_matrix);

} // namespace

TAVIK_EXPORT(void)
xColorMatrix(int32_t x_max, int32_t y_max, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
             uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const float *matrix) {
    const std::size_t count = upper_bounds(x_max, y_max);
    auto &row = row_in_order(multiply_by_matrix, {src_r, src_g, src_b, dst_r, dst_g, dst_b}, count);
    row(src_r, src_g, src_b, dst_r, dst_g, dst_b, count, matrix);
}

TAVIK_EXPORT(void)
xColorMatrix_ppl(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                 uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const float *matrix) {
    const std::size_t stride = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        const std::size_t start = begin * stride;
        multiply_by_matrix.active()(src_r + start, src_g + start, src_b + start, dst_r + start, dst_g + start,
                                    dst_b + start, (end - begin) * stride, matrix);
    });
}
