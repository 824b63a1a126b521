#include "tavik/convert/convert.h"

#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/frame/streaming.h"

#define TAVIK_ROWS "tavik/convert/bitmaps_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using Plane = uint8_t *;
using ConstPlane = const uint8_t *;

using PackRow = void(ConstPlane r, ConstPlane g, ConstPlane b, uint8_t *dst, std::size_t count, bool streamed);
constexpr PerLevel<PackRow> pack_bitmap = TAVIK_EVERY_LEVEL(pack_bitmap);
constexpr PerLevel<PackRow> pack_quads = TAVIK_EVERY_LEVEL(pack_quads);
constexpr PerLevel<void(Plane r, Plane g, Plane b, const uint8_t *src, std::size_t count)> unpack_quads =
    TAVIK_EVERY_LEVEL(unpack_quads);

void pack(const PerLevel<PackRow> &rows, ConstPlane r, ConstPlane g, ConstPlane b, uint8_t *dst, std::size_t count,
          bool streamed) {
    // A plane that shares bytes with the wider quads needs the plain loop.
    const auto apart = [&](ConstPlane plane) { return plane != dst && same_or_apart(plane, dst, 4 * count); };
    (apart(r) && apart(g) && apart(b) ? rows.active() : rows.scalar())(r, g, b, dst, count, streamed);
}

// Runs row(plane offset, bitmap offset) for each row, in parallel. Offsets into the bitmap are signed: a
// bottom-up bitmap has a negative stride.
template <class Row> void for_each_bitmap_row(int32_t x_max, int32_t height, int32_t bitmap_stride, const Row &row) {
    if (x_max <= 0) return;
    parallel_for(0, height, row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) row((std::ptrdiff_t{x_max} + 1) * y, std::ptrdiff_t{bitmap_stride} * y);
        fence_stream();
    });
}

} // namespace

TAVIK_EXPORT(void)
RGB_to_bbytes(int32_t x_max, int32_t height, int32_t dst_stride, int32_t /*ignored*/, const uint8_t *src_r,
              const uint8_t *src_g, const uint8_t *src_b, uint32_t *dst) {
    const bool streamed = is_streamed(counts(x_max, height) * sizeof *dst);
    for_each_bitmap_row(x_max, height, dst_stride, [&](std::ptrdiff_t s, std::ptrdiff_t d) {
        auto *quads = reinterpret_cast<uint8_t *>(dst + d);
        pack(pack_bitmap, src_r + s, src_g + s, src_b + s, quads, element_count(x_max), streamed);
    });
}

TAVIK_EXPORT(void)
bbytes_to_RGB(int32_t x_max, int32_t height, int32_t src_stride, int32_t /*ignored*/, uint8_t *dst_r, uint8_t *dst_g,
              uint8_t *dst_b, const uint32_t *src) {
    for_each_bitmap_row(x_max, height, src_stride, [&](std::ptrdiff_t d, std::ptrdiff_t s) {
        // In memory a bitmap pixel is a quad with blue first.
        const auto *quads = reinterpret_cast<const uint8_t *>(src + s);
        unpack_quads.active()(dst_b + d, dst_g + d, dst_r + d, quads, element_count(x_max));
    });
}

TAVIK_EXPORT(void)
LongRGBV_to_RGB_array(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst, int32_t x_max,
                      int32_t y_max) {
    const std::size_t count = upper_bounds(x_max, y_max);
    pack(pack_quads, src_r, src_g, src_b, dst, count, is_streamed(4 * count));
    fence_stream();
}

TAVIK_EXPORT(void)
Long_to_RGBV_array(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src, int32_t x_max, int32_t y_max) {
    unpack_quads.active()(dst_r, dst_g, dst_b, src, upper_bounds(x_max, y_max));
}
