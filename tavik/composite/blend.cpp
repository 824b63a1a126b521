#include "tavik/composite/composite.h"

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/composite/blend_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using CombineRow = void(const uint8_t *a, const uint8_t *b, uint8_t *dst, std::size_t count);
using MixRow = void(const uint8_t *a, const uint8_t *b, uint8_t *dst, std::size_t count, float share_of_b);
using OverlayRow = void(const uint8_t *over, const uint8_t *under, const uint8_t *mask, uint8_t *dst,
                        std::size_t count);
using LayerRow = void(const uint8_t *layer, uint8_t *target, std::size_t count);
using DodgeRow = void(const uint8_t *layer, uint8_t *target, std::size_t count, uint8_t flip);

constexpr PerLevel<CombineRow> add = TAVIK_EVERY_LEVEL(add);
constexpr PerLevel<CombineRow> subtract = TAVIK_EVERY_LEVEL(subtract);
constexpr PerLevel<MixRow> mix = TAVIK_EVERY_LEVEL(mix);
constexpr PerLevel<OverlayRow> overlay = TAVIK_EVERY_LEVEL(overlay);
constexpr PerLevel<LayerRow> soft_light = TAVIK_EVERY_LEVEL(soft_light);
constexpr PerLevel<LayerRow> hard_light = TAVIK_EVERY_LEVEL(hard_light);
constexpr PerLevel<DodgeRow> dodge_or_burn = TAVIK_EVERY_LEVEL(dodge_or_burn);
constexpr PerLevel<LayerRow> vivid_light = TAVIK_EVERY_LEVEL(vivid_light);
constexpr PerLevel<LayerRow> linear_dodge = TAVIK_EVERY_LEVEL(linear_dodge);
constexpr PerLevel<LayerRow> linear_burn = TAVIK_EVERY_LEVEL(linear_burn);
constexpr PerLevel<LayerRow> linear_light = TAVIK_EVERY_LEVEL(linear_light);

void combine(const PerLevel<CombineRow> &rows, std::size_t count, const uint8_t *a, const uint8_t *b, uint8_t *dst) {
    row_in_order(rows, {a, b, dst}, count)(a, b, dst, count);
}

void mix_by_amount(std::size_t count, int32_t amount_of_b, const uint8_t *a, const uint8_t *b, uint8_t *dst) {
    const float share_of_b = static_cast<float>(amount_of_b) * unit_per_byte;
    auto &row = row_in_order(mix, {a, b, dst}, count);
    FetchAhead(count, a, b, dst).for_all([&](std::size_t i, std::size_t n) {
        row(a + i, b + i, dst + i, n, share_of_b);
    });
}

void blend_layer(const PerLevel<LayerRow> &rows, int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    const std::size_t count = counts(width, height);
    auto &row = row_in_order(rows, layer, target, count);
    FetchAhead(count, layer, target).for_all([&](std::size_t i, std::size_t n) { row(layer + i, target + i, n); });
}

void dodge_layer(uint8_t flip, int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    const std::size_t count = counts(width, height);
    auto &row = row_in_order(dodge_or_burn, layer, target, count);
    FetchAhead(count, layer, target).for_all([&](std::size_t i, std::size_t n) {
        row(layer + i, target + i, n, flip);
    });
}

} // namespace

TAVIK_EXPORT(void)
xCombineAdd(int32_t x_max, int32_t y_max, const uint8_t *src_a, const uint8_t *src_b, uint8_t *dst) {
    combine(add, upper_bounds(x_max, y_max), src_a, src_b, dst);
}

TAVIK_EXPORT(void)
xCombineSub(int32_t x_max, int32_t y_max, const uint8_t *src_a, const uint8_t *src_b, uint8_t *dst) {
    combine(subtract, upper_bounds(x_max, y_max), src_a, src_b, dst);
}

TAVIK_EXPORT(void) xBlend(int32_t x_max, int32_t y_max, int32_t amount, const uint8_t *src, uint8_t *target) {
    mix_by_amount(upper_bounds(x_max, y_max), amount, src, target, target);
}

TAVIK_EXPORT(void)
xBlend2(int32_t x_max, int32_t y_max, int32_t amount, const uint8_t *src_a, const uint8_t *src_b, uint8_t *dst) {
    mix_by_amount(upper_bounds(x_max, y_max), amount, src_a, src_b, dst);
}

TAVIK_EXPORT(void)
Overlay_channel(uint8_t *over, const uint8_t *under, const uint8_t *mask, int32_t width, int32_t height) {
    const std::size_t count = counts(width, height);
    auto &row = row_in_order(overlay, {under, mask, over}, count);
    FetchAhead(count, under, mask, over).for_all([&](std::size_t i, std::size_t n) {
        row(over + i, under + i, mask + i, over + i, n);
    });
}

TAVIK_EXPORT(void) xcombineSoftLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    blend_layer(soft_light, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombineHardLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    blend_layer(hard_light, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombineColorDodge(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    dodge_layer(0, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombineColorBurn(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    dodge_layer(255, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombinelinearDodge(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    blend_layer(linear_dodge, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombinelinearBurn(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    blend_layer(linear_burn, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombineLinearLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    blend_layer(linear_light, width, height, layer, target);
}

TAVIK_EXPORT(void) xcombineVividLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target) {
    blend_layer(vivid_light, width, height, layer, target);
}
