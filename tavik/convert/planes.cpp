#include "tavik/convert/convert.h"

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/frame/streaming.h"

#define TAVIK_ROWS "tavik/convert/planes_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

template <class From, class To> using ConvertRow = void(const From *src, To *dst, std::size_t count);

constexpr PerLevel<void(uint32_t *dst, std::size_t count, uint32_t value)> fill_run = TAVIK_EVERY_LEVEL(fill);
constexpr PerLevel<ConvertRow<uint8_t, float>> widen_to_float = TAVIK_EVERY_LEVEL(char_to_float);
constexpr PerLevel<ConvertRow<float, uint8_t>> narrow_float = TAVIK_EVERY_LEVEL(float_to_char);
constexpr PerLevel<ConvertRow<float, uint8_t>> clamp_float = TAVIK_EVERY_LEVEL(float_to_char_clamp);
constexpr PerLevel<ConvertRow<uint8_t, int32_t>> widen_to_long = TAVIK_EVERY_LEVEL(char_to_long);
constexpr PerLevel<ConvertRow<int32_t, uint8_t>> narrow_long = TAVIK_EVERY_LEVEL(long_to_char);

void fill(uint32_t *dst, std::size_t count, uint32_t value) {
    if (!is_streamed(count * sizeof *dst)) return fill_run.active()(dst, count, value);
    make_streamed(dst, count, [&](std::size_t, uint32_t *to, std::size_t n) { fill_run.active()(to, n, value); });
}

// Rows are packed, so a range of rows is one run.
template <class From, class To>
void convert_plane(const PerLevel<ConvertRow<From, To>> &rows, int32_t width, int32_t height, const From *src,
                   To *dst) {
    const std::size_t stride = element_count(width);
    const std::size_t all = counts(width, height);
    const bool streamed =
        is_streamed(all * sizeof(To)) && same_or_apart(src, dst, all * std::max(sizeof(From), sizeof(To)));
    if (!streamed) {
        const auto convert = [&](std::size_t i, std::size_t n) { rows.active()(src + i, dst + i, n); };
        return FetchAhead(all, src, dst).for_rows(width, height, convert);
    }
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        const From *from = src + begin * stride;
        make_streamed(dst + begin * stride, (end - begin) * stride,
                      [&](std::size_t i, To *to, std::size_t n) { rows.active()(from + i, to, n); });
    });
}

} // namespace

TAVIK_EXPORT(void) SetFloat(int32_t count, int32_t value, void *dst) {
    fill(static_cast<uint32_t *>(dst), element_count(count), static_cast<uint32_t>(value));
}

TAVIK_EXPORT(void) xFillBuff(int32_t width, int32_t height, int32_t value, void *dst) {
    fill(static_cast<uint32_t *>(dst), counts(width, height), static_cast<uint32_t>(value));
}

TAVIK_EXPORT(void) char_to_float(int32_t width, int32_t height, const uint8_t *src, float *dst) {
    convert_plane(widen_to_float, width, height, src, dst);
}

TAVIK_EXPORT(void) float_to_char(int32_t width, int32_t height, const float *src, uint8_t *dst) {
    convert_plane(narrow_float, width, height, src, dst);
}

TAVIK_EXPORT(void) float_to_char_clamp(int32_t width, int32_t height, const float *src, uint8_t *dst) {
    convert_plane(clamp_float, width, height, src, dst);
}

TAVIK_EXPORT(void) char_to_long(int32_t width, int32_t height, const uint8_t *src, int32_t *dst) {
    convert_plane(widen_to_long, width, height, src, dst);
}

TAVIK_EXPORT(void) long_to_char(int32_t width, int32_t height, const int32_t *src, uint8_t *dst) {
    convert_plane(narrow_long, width, height, src, dst);
}
