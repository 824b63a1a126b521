#include "tavik/tone/tone.h"

#include "tavik/frame/bytes.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/tone/inversion_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using ThreePlanesRow = void(uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count);

constexpr PerLevel<ThreePlanesRow> invert_value = TAVIK_EVERY_LEVEL(invert_value);
constexpr PerLevel<ThreePlanesRow> cancel_value = TAVIK_EVERY_LEVEL(cancel_value);

} // namespace

TAVIK_EXPORT(void) xInvert(int32_t x_max, int32_t y_max, uint8_t *plane) {
    complement.active()(plane, upper_bounds(x_max, y_max));
}

TAVIK_EXPORT(void) xNegate(int32_t width, int32_t height, uint8_t *plane) {
    complement.active()(plane, counts(width, height));
}

TAVIK_EXPORT(void) xInvertValue(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    invert_value.active()(r, g, b, counts(width, height));
}

TAVIK_EXPORT(void) xValueCancelation(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    cancel_value.active()(r, g, b, counts(width, height));
}
