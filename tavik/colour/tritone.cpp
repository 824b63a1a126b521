#include <algorithm>
#include <array>

#include "tavik/colour/colour.h"
#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/colour/tritone_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, std::size_t count)>
    mean_of_planes = TAVIK_EVERY_LEVEL(mean_of_planes);

// One channel over the greys. 64-bit, so that colours out of range wrap instead of being undefined.
ByteTable tone_table(int64_t light, int64_t mid, int64_t dark) {
    return tabulate([=](uint8_t grey) {
        const int64_t v = grey;
        return low_byte(v < 128 ? (mid * v + dark * (127 - v) + 63) / 127
                                : (light * (v - 127) + mid * (255 - v) + 64) / 128);
    });
}

} // namespace

TAVIK_EXPORT(void)
xTritone(int32_t width, int32_t height, int32_t light_r, int32_t light_g, int32_t light_b, int32_t mid_r, int32_t mid_g,
         int32_t mid_b, int32_t dark_r, int32_t dark_g, int32_t dark_b, const uint8_t *src_r, const uint8_t *src_g,
         const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    if (width <= 0 || height <= 0) return;
    const std::array<ByteTable, 3> tables = {tone_table(light_r, mid_r, dark_r), tone_table(light_g, mid_g, dark_g),
                                             tone_table(light_b, mid_b, dark_b)};
    const uint8_t *const table_starts[] = {tables[0].data(), tables[1].data(), tables[2].data()};
    const FetchAhead planes(counts(width, height), src_r, src_g, src_b, dst_r, dst_g, dst_b);
    planes.for_rows(width, height, [&](std::size_t begin, std::size_t run) {
        std::array<uint8_t, 4096> means;
        for (std::size_t i = begin; i < begin + run; i += means.size()) {
            const std::size_t count = std::min(means.size(), begin + run - i);
            mean_of_planes.active()(src_r + i, src_g + i, src_b + i, means.data(), count);
            uint8_t *const dst[] = {dst_r + i, dst_g + i, dst_b + i};
            map_bytes_to_three.active()(means.data(), dst, count, table_starts);
        }
    });
}
