#include "tavik/paint/paint.h"

#include "bench/support/cases.h"
#include "bench/support/float_canvas.h"

namespace tavik_bench {
namespace {

// Calls stamp(cx, cy) for a grid of dabs over the picture.
template <class Stamp> void stamp_grid(int32_t width, int32_t height, int32_t pitch, const Stamp &stamp) {
    for (int32_t y = pitch / 2; y < height; y += pitch)
        for (int32_t x = pitch / 2; x < width; x += pitch) stamp(static_cast<float>(x), static_cast<float>(y));
}

// Dabs as wide as their pitch, half of it solid.
template <auto Export, int32_t pitch> void bytes(const Picture &p) {
    stamp_grid(p.width, p.height, pitch, [&](float cx, float cy) {
        Export(cx, cy, pitch * 0.5F, pitch * 0.25F, 200, 90.5F, 10, 0.75F, p.x_max(), p.y_max(), p.to_r, p.to_g,
               p.to_b);
    });
}

template <auto Export, int32_t pitch, class... Depth> void stamp_floats(const Picture &p, Depth... depth) {
    const FloatCanvas canvas(p);
    stamp_grid(canvas.side, canvas.side, pitch, [&](float cx, float cy) {
        Export(cx, cy, pitch * 0.5F, pitch * 0.25F, 200, 90.5F, 10, 0.75F, canvas.side - 1, canvas.side - 1,
               canvas.planes[0], canvas.planes[1], canvas.planes[2], depth...);
    });
}

template <auto Export, int32_t pitch> void floats(const Picture &p) { stamp_floats<Export, pitch>(p); }
template <int32_t pitch> void in_front(const Picture &p) {
    stamp_floats<FeatheredCircle_ppl_float_zbuffer, pitch>(p, 100.0F, p.floats);
}

// A line from each row of the left edge, with about as many samples as the row has pixels.
void draw_lines(const Picture &p) {
    for (int32_t y = 0; y < p.height; ++y)
        xAAFloatLine(0, static_cast<float>(y), static_cast<float>(p.x_max()), static_cast<float>(y * 7 % p.height), 200,
                     90.5F, 10, p.width, p.height, p.to_r, p.to_g, p.to_b);
}

// A dab of 16 pixels for each 16 × 16 pixels: the megapixels per second are 256 times the millions of dabs.
const std::string small = "a dab for each 256 pixels";

const Case cases[] = {
    {"FeatheredCircle, 16 pixels", {.bytes = 6, .note = small}, bytes<FeatheredCircle, 16>},
    {"FeatheredCircle, 192 pixels", {.bytes = 6}, bytes<FeatheredCircle, 192>},
    {"FeatheredCircle_Add, 16 pixels", {.bytes = 6, .note = small}, bytes<FeatheredCircle_Add, 16>},
    {"FeatheredCircle_Add, 192 pixels", {.bytes = 6}, bytes<FeatheredCircle_Add, 192>},
    {"FeatheredCircle_Multiply, 16 pixels", {.bytes = 6, .note = small}, bytes<FeatheredCircle_Multiply, 16>},
    {"FeatheredCircle_Multiply, 192 pixels", {.bytes = 6}, bytes<FeatheredCircle_Multiply, 192>},
    {"FeatheredCircle_ppl, 16 pixels", {.bytes = 6, .note = small}, bytes<FeatheredCircle_ppl, 16>},
    {"FeatheredCircle_ppl, 192 pixels", {.bytes = 6, .parallel = true}, bytes<FeatheredCircle_ppl, 192>},
    {"FeatheredCircle_ppl_float, 16 pixels",
     {.bytes = 24, .rows = FloatCanvas::rows, .note = small},
     floats<FeatheredCircle_ppl_float, 16>},
    {"FeatheredCircle_ppl_float, 128 pixels",
     {.bytes = 24, .parallel = true, .rows = FloatCanvas::rows},
     floats<FeatheredCircle_ppl_float, 128>},
    {"FeatheredCircle_ppl_float_zbuffer, 16 pixels",
     {.bytes = 28, .rows = FloatCanvas::rows, .note = small},
     in_front<16>},
    {"FeatheredCircle_ppl_float_zbuffer, 128 pixels",
     {.bytes = 28, .parallel = true, .rows = FloatCanvas::rows},
     in_front<128>},
    {"xAAFloatLine", {.bytes = 24, .note = "a sample of 2 × 2 pixels for each pixel"}, draw_lines},
};

const Family paint("paint", cases);

} // namespace
} // namespace tavik_bench
