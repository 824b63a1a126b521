#include <algorithm>
#include <bit>

#include "tavik/frame/size_form.h"
#include "tavik/framefile/framefile.h"

#define TAVIK_ROWS "tavik/framefile/bytes_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src, uint8_t *blue, uint8_t *green, uint8_t *red, std::size_t count)>
    unpack_pixels = TAVIK_EVERY_LEVEL(unpack_pixels);
constexpr PerLevel<std::size_t(const uint8_t *src, std::size_t count)> run_length = TAVIK_EVERY_LEVEL(run_length);

} // namespace

TAVIK_EXPORT(void)
AVI_extract(int32_t x_max, int32_t height, int32_t byte_count, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
            const uint8_t *src) {
    std::size_t left = (element_count(byte_count) + 2) / 3;
    const std::size_t columns = std::max(element_count(x_max), std::size_t{1});
    for (std::ptrdiff_t row = std::ptrdiff_t{height} - 1; left > 0; --row) {
        const std::size_t count = std::min(left, columns);
        const std::ptrdiff_t at = (std::ptrdiff_t{x_max} + 1) * row;
        unpack_pixels.active()(src, dst_b + at, dst_g + at, dst_r + at, count);
        src += 3 * count;
        left -= count;
    }
}

TAVIK_EXPORT(void) FilmstripHelper(float step, int32_t first, int32_t last, const uint8_t *src, uint8_t *dst) {
    float position = 0;
    for (int64_t i = first; i <= last; ++i) {
        dst[i] = src[truncate(position)];
        position += step;
    }
}

TAVIK_EXPORT(int32_t) xRLE_Encode_byte(const uint8_t *src, uint8_t *dst, int32_t *length) {
    const std::size_t count = element_count(*length);
    std::size_t written = 0;
    const auto write = [&](std::size_t value) {
        dst[written++] = low_byte(value);
        return written + 1 < count;
    };
    constexpr std::size_t longest_run = 255;
    bool fits = true;
    for (std::size_t at = 0; fits && at < count;) {
        const bool alone = at + 1 == count || src[at + 1] != src[at];
        const std::size_t run = alone ? 1 : run_length.active()(src + at, std::min(count - at, longest_run));
        fits = write(run) && write(src[at]);
        at += run;
    }
    *length = static_cast<int32_t>(written);
    return fits ? 0 : 1;
}
