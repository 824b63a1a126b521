#include "tavik/tone/tone.h"

#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/tone/inversion_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using ThreePlanesRow = void(uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count);

constexpr PerLevel<ThreePlanesRow> invert_value = TAVIK_EVERY_LEVEL(invert_value);
constexpr PerLevel<ThreePlanesRow> cancel_value = TAVIK_EVERY_LEVEL(cancel_value);

void change_planes(const PerLevel<ThreePlanesRow> &rows, int32_t width, int32_t height, uint8_t *r, uint8_t *g,
                   uint8_t *b) {
    const std::size_t count = counts(width, height);
    auto &row = row_in_order(rows, {r, g, b}, count);
    FetchAhead(count, r, g, b).for_all([&](std::size_t i, std::size_t n) { row(r + i, g + i, b + i, n); });
}

} // namespace

TAVIK_EXPORT(void) xInvert(int32_t x_max, int32_t y_max, uint8_t *plane) {
    complement.active()(plane, upper_bounds(x_max, y_max));
}

TAVIK_EXPORT(void) xNegate(int32_t width, int32_t height, uint8_t *plane) {
    complement.active()(plane, counts(width, height));
}

TAVIK_EXPORT(void) xInvertValue(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    change_planes(invert_value, width, height, r, g, b);
}

TAVIK_EXPORT(void) xValueCancelation(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    change_planes(cancel_value, width, height, r, g, b);
}
