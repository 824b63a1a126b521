#include "tavik/composite/composite.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

using LayerMode = void TAVIK_CALL(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

template <LayerMode Mode> void blend(const Picture &p) { Mode(p.width, p.height, p.r, p.to_r); }

struct Accumulators {
    int16_t *first;
    int16_t *second;
    int16_t *third;

    explicit Accumulators(const Picture &p)
        : first(reinterpret_cast<int16_t *>(p.to_pixels)),
          second(first + p.count()),
          third(reinterpret_cast<int16_t *>(p.to_floats)) {}
};

// The planes of a picture and the bytes of its other elements, as six images.
template <auto Skin> void add_skins(const Picture &p) {
    const std::size_t count = static_cast<std::size_t>(p.count());
    const uint8_t *more[2] = {p.quads(), reinterpret_cast<const uint8_t *>(p.floats)};
    const auto a = [&](std::size_t index) { return more[0] + index * count; };
    const auto b = [&](std::size_t index) { return more[1] + index * count; };
    Skin(p.width, p.height, 0.1F, 0.2F, 0.2F, 0.2F, 0.2F, 0.1F, p.r, p.g, p.b, a(0), a(1), b(0), a(2), a(3), b(1), b(0),
         b(1), b(2), b(2), b(3), a(0), p.g, p.b, p.r, p.to_r, p.to_g, p.to_b);
}

const Case cases[] = {
    {"xCombineAdd",
     {.bytes = 3, .in_place_too = true},
     [](const Picture &p) { xCombineAdd(p.x_max(), p.y_max(), p.r, p.g, p.to_r); }},
    {"xCombineSub", {.bytes = 3}, [](const Picture &p) { xCombineSub(p.x_max(), p.y_max(), p.r, p.g, p.to_r); }},
    {"xBlend", {.bytes = 3}, [](const Picture &p) { xBlend(p.x_max(), p.y_max(), 100, p.r, p.to_r); }},
    {"xBlend2", {.bytes = 3}, [](const Picture &p) { xBlend2(p.x_max(), p.y_max(), 100, p.r, p.g, p.to_r); }},
    {"Overlay_channel", {.bytes = 4}, [](const Picture &p) { Overlay_channel(p.to_r, p.r, p.g, p.width, p.height); }},
    {"xcombineSoftLight", {.bytes = 3}, blend<xcombineSoftLight>},
    {"xcombineHardLight", {.bytes = 3}, blend<xcombineHardLight>},
    {"xcombineColorDodge", {.bytes = 3}, blend<xcombineColorDodge>},
    {"xcombineColorBurn", {.bytes = 3}, blend<xcombineColorBurn>},
    {"xcombinelinearDodge", {.bytes = 3}, blend<xcombinelinearDodge>},
    {"xcombinelinearBurn", {.bytes = 3}, blend<xcombinelinearBurn>},
    {"xcombineLinearLight", {.bytes = 3}, blend<xcombineLinearLight>},
    {"xcombineVividLight", {.bytes = 3}, blend<xcombineVividLight>},
    {"AlphaBlit", {.bytes = 4}, [](const Picture &p) { AlphaBlit(p.width, p.height, p.r, p.to_r, p.g); }},
    {"Matte_preview_helper",
     {.bytes = 7},
     [](const Picture &p) {
         Matte_preview_helper(p.to_quads(), p.r, p.count(), 0, p.count(), 0, 20, 200, 90, 0, 128);
     }},
    {"alpha_overlay_helper",
     {.bytes = 3, .note = "a store for each sample, three bytes apart"},
     [](const Picture &p) { alpha_overlay_helper(0, 0, 0, p.count() - 1, p.r, p.g, p.to_quads(), 1); }},
    {"UnionSkin",
     {.bytes = 21, .parallel = true, .note = "three tasks, which two threads share two to one"},
     add_skins<UnionSkin>},
    {"UnionSkin_untinted",
     {.bytes = 21, .parallel = true, .note = "three tasks, which two threads share two to one"},
     add_skins<UnionSkin_untinted>},
    {"xSwapBlit",
     {.bytes = 4},
     [](const Picture &p) { xSwapBlit(p.width, p.height, 0, 0, p.width, p.height, p.to_r, p.to_g); }},
    {"FixedAspectBlit, smaller",
     {.bytes = 6, .parallel = true, .note = "a load and a store for each sample"},
     [](const Picture &p) {
         FixedAspectBlit(p.width, p.height, p.width, p.height, p.width / 8, 0, 0.75F, 9, 9, 9, p.to_r, p.to_g, p.to_b,
                         p.r, p.g, p.b);
     }},
    {"FixedAspectBlit, larger",
     {.bytes = 6, .parallel = true, .note = "a load and a store for each sample"},
     [](const Picture &p) {
         FixedAspectBlit(p.width, p.height, p.width, p.height, 0, 0, 2.5F, 9, 9, 9, p.to_r, p.to_g, p.to_b, p.r, p.g,
                         p.b);
     }},
    {"xLinearAlphaFadePreview",
     {.bytes = 7, .parallel = true},
     [](const Picture &p) {
         xLinearAlphaFadePreview(p.width, p.height, 20, 10, p.width - 30, p.height - 10, p.r, p.g, p.b, p.r, p.to_r,
                                 p.to_g, p.to_b);
     }},
    {"xAccumulate",
     {.bytes = 15, .parallel = true},
     [](const Picture &p) {
         const Accumulators to(p);
         xAccumulate(p.width, p.height, p.r, p.g, p.b, to.first, to.second, to.third);
     }},
    {"xAccumulate3d",
     {.bytes = 15, .parallel = true},
     [](const Picture &p) {
         const Accumulators to(p);
         xAccumulate3d(p.width, p.height, 3, p.r, p.g, p.b, to.first, to.second, to.third);
     }},
    {"xAccumulate_finish",
     {.bytes = 9, .parallel = true},
     [](const Picture &p) {
         const Accumulators from(p);
         xAccumulate_finish(7, p.width, p.height, from.first, from.second, from.third, p.to_r, p.to_g, p.to_b);
     }},
};

const Family composite("composite", cases);

} // namespace
} // namespace tavik_bench
