#include "tavik/tone/tone.h"

#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

TAVIK_EXPORT(void)
MapLut(int32_t x_max, int32_t y_max, const uint8_t *src, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
       const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b) {
    const int32_t width = wrap_add(x_max, 1);
    const uint8_t *const tables[3] = {table_r, table_g, table_b};
    const int32_t height = wrap_add(y_max, 1);
    const FetchAhead planes(counts(width, height), src, dst_r, dst_g, dst_b);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        uint8_t *const dst[3] = {dst_r + i, dst_g + i, dst_b + i};
        map_bytes_to_three.active()(src + i, dst, n, tables);
    });
}

TAVIK_EXPORT(void) ValueLut(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst, const uint8_t *table) {
    const std::size_t count = counts(width, height);
    map_in_order(src, dst, count, table);
}
