#include "tavik/colour/colour.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
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
    const FetchAhead planes(count, src_r, src_g, src_b, dst_r, dst_g, dst_b);
    planes.for_all([&](std::size_t i, std::size_t n) {
        row(src_r + i, src_g + i, src_b + i, dst_r + i, dst_g + i, dst_b + i, n, matrix);
    });
}

TAVIK_EXPORT(void)
xColorMatrix_ppl(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                 uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const float *matrix) {
    const FetchAhead planes(counts(width, height), src_r, src_g, src_b, dst_r, dst_g, dst_b);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        multiply_by_matrix.active()(src_r + i, src_g + i, src_b + i, dst_r + i, dst_g + i, dst_b + i, n, matrix);
    });
}
