#include "tavik/tone/tone.h"

#include "tavik/frame/bytes.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

TAVIK_EXPORT(void)
MapLut(int32_t x_max, int32_t y_max, const uint8_t *src, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
       const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b) {
    const int32_t width = wrap_add(x_max, 1);
    const std::size_t stride = element_count(width);
    const uint8_t *const tables[3] = {table_r, table_g, table_b};
    parallel_for(0, wrap_add(y_max, 1), row_grain(width), [&](int32_t begin, int32_t end) {
        const std::size_t start = begin * stride;
        uint8_t *const dst[3] = {dst_r + start, dst_g + start, dst_b + start};
        map_bytes_to_three.active()(src + start, dst, (end - begin) * stride, tables);
    });
}

TAVIK_EXPORT(void) ValueLut(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst, const uint8_t *table) {
    const std::size_t count = counts(width, height);
    row_in_order(map_bytes, src, dst, count)(src, dst, count, table);
}
