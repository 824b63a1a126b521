#include <algorithm>
#include <array>
#include <cstddef>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/paint/byte_mix.h"
#include "tavik/paint/paint.h"

#define TAVIK_ROWS "tavik/paint/brushes_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

using namespace tavik;

constexpr PerLevel<void(const uint8_t *mask, uint8_t opacity, const uint8_t *src, uint8_t *dst, std::size_t count)>
    mix_through = TAVIK_EVERY_LEVEL(mix_through);
constexpr PerLevel<void(const uint8_t *mask, uint8_t strength, uint8_t pickup, uint8_t *carry, uint8_t *plane,
                        std::size_t count)>
    smear_bytes = TAVIK_EVERY_LEVEL(smear_bytes);
constexpr PerLevel<void(const uint8_t *mask, float strength, float pickup, float *carry, float *plane,
                        std::size_t count)>
    smear_floats = TAVIK_EVERY_LEVEL(smear_floats);

// Along one axis, the samples of a brush that lie on the plane.
struct Overlap {
    int32_t begin;
    int32_t end;

    Overlap(int32_t position, int32_t brush_size, int32_t plane_size)
        : begin(on_brush(-int64_t{position}, brush_size)), end(on_brush(int64_t{plane_size} - position, brush_size)) {}

    // 64-bit, as the brush may lie anywhere.
    static int32_t on_brush(int64_t index, int32_t brush_size) {
        return static_cast<int32_t>(std::clamp<int64_t>(index, 0, std::max(brush_size, 0)));
    }
};

struct Brush {
    int32_t x, y, width, height;
};

// Calls handle(index into the brush, index into the plane, count) for the rows of a brush on a plane.
template <class Handle> void for_each_row(const Brush &brush, int32_t width, int32_t height, const Handle &handle) {
    const Overlap columns(brush.x, brush.width, width);
    const Overlap rows(brush.y, brush.height, height);
    if (columns.begin >= columns.end) return;
    for (int32_t row = rows.begin; row < rows.end; ++row) {
        const auto in_brush = static_cast<std::size_t>(row) * static_cast<std::size_t>(brush.width);
        const auto in_plane = static_cast<std::size_t>(brush.y + row) * static_cast<std::size_t>(width);
        handle(in_brush + static_cast<std::size_t>(columns.begin),
               in_plane + static_cast<std::size_t>(brush.x + columns.begin),
               static_cast<std::size_t>(columns.end - columns.begin));
    }
}

// Rows of a brush lie too far apart on the planes for the processor to see a pattern.
void fetch_below(const std::array<uint8_t *, 3> &planes, std::size_t row, std::size_t count, int32_t width) {
    const std::size_t below = row + element_count(width);
    for (const uint8_t *plane : planes) prefetch(plane, below, below + count);
}

} // namespace

TAVIK_EXPORT(void)
CustomBrushBlit(int32_t x, int32_t y, int32_t brush_width, int32_t brush_height, int32_t opacity, int32_t width,
                int32_t height, const uint8_t *brush_r, const uint8_t *brush_g, const uint8_t *brush_b,
                const uint8_t *brush_a, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const std::array<const uint8_t *, 3> brush = {brush_r, brush_g, brush_b};
    const std::array<uint8_t *, 3> planes = {plane_r, plane_g, plane_b};
    for_each_row({x, y, brush_width, brush_height}, width, height, [&](std::size_t from, std::size_t to, auto count) {
        fetch_below(planes, to, count, width);
        for (std::size_t i = 0; i < 3; ++i)
            mix_through.active()(brush_a + from, low_byte(opacity), brush[i] + from, planes[i] + to, count);
    });
}

TAVIK_EXPORT(void)
Cust_Smear_helper(int32_t x, int32_t y, int32_t brush_width, int32_t brush_height, int32_t strength, int32_t pickup,
                  int32_t width, int32_t height, const uint8_t *mask, uint8_t *carry_r, uint8_t *carry_g,
                  uint8_t *carry_b, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const std::array<uint8_t *, 3> carry = {carry_r, carry_g, carry_b};
    const std::array<uint8_t *, 3> planes = {plane_r, plane_g, plane_b};
    for_each_row({x, y, brush_width, brush_height}, width, height, [&](std::size_t from, std::size_t to, auto count) {
        fetch_below(planes, to, count, width);
        for (std::size_t i = 0; i < 3; ++i)
            smear_bytes.active()(mask + from, low_byte(strength), low_byte(pickup), carry[i] + from, planes[i] + to,
                                 count);
    });
}

TAVIK_EXPORT(void)
Cust_Smear_helper2(int32_t x, int32_t y, int32_t brush_width, int32_t brush_height, float strength, float pickup,
                   int32_t width, int32_t height, const uint8_t *mask, float *carry_r, float *carry_g, float *carry_b,
                   float *plane_r, float *plane_g, float *plane_b) {
    const std::array<float *, 3> carry = {carry_r, carry_g, carry_b};
    const std::array<float *, 3> planes = {plane_r, plane_g, plane_b};
    for_each_row({x, y, brush_width, brush_height}, width, height, [&](std::size_t from, std::size_t to, auto count) {
        for (std::size_t i = 0; i < 3; ++i)
            smear_floats.active()(mask + from, strength, pickup, carry[i] + from, planes[i] + to, count);
    });
}

TAVIK_EXPORT(void)
xclonefill(int32_t width, int32_t height, int32_t dx, int32_t dy, int32_t opacity, const uint8_t *mask,
           const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
           uint8_t *dst_b) {
    if (width <= 0) return;
    const std::array<const uint8_t *, 3> src = {src_r, src_g, src_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    const std::size_t columns = element_count(width);
    // A row is the end of a source row and then its beginning.
    const auto shift = static_cast<std::size_t>(floored_modulo(dx, width));
    const std::size_t before_seam = columns - shift;
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            const std::size_t to = static_cast<std::size_t>(y) * columns;
            const std::size_t from = static_cast<std::size_t>(floored_modulo(int64_t{y} + dy, height)) * columns;
            for (std::size_t i = 0; i < 3; ++i) {
                mix_through.active()(mask + to, low_byte(opacity), src[i] + from + shift, dst[i] + to, before_seam);
                mix_through.active()(mask + to + before_seam, low_byte(opacity), src[i] + from,
                                     dst[i] + to + before_seam, shift);
            }
        }
    });
}
