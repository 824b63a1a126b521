#include "bench/support/cases.h"
#include "bench/support/float_canvas.h"
#include "tavik/paint/paint.h"

namespace tavik_bench {
namespace {

// The picture in brushes of 64 × 64 side by side; the brush is a part of it.
constexpr int32_t brush = 64;

template <class Stamp> void for_each_brush(int32_t width, int32_t height, const Stamp &stamp) {
    for (int32_t y = 0; y < height; y += brush)
        for (int32_t x = 0; x < width; x += brush) stamp(x, y);
}

void stamps(const Picture &p) {
    for_each_brush(p.width, p.height, [&](int32_t x, int32_t y) {
        CustomBrushBlit(x, y, brush, brush, 200, p.width, p.height, p.r, p.g, p.b, p.quads(), p.to_r, p.to_g, p.to_b);
    });
}

void byte_smears(const Picture &p) {
    uint8_t *carry = p.to_quads();
    for_each_brush(p.width, p.height, [&](int32_t x, int32_t y) {
        Cust_Smear_helper(x, y, brush, brush, 200, 90, p.width, p.height, p.r, carry, carry + 4096, carry + 8192,
                          p.to_r, p.to_g, p.to_b);
    });
}

void float_smears(const Picture &p) {
    const FloatCanvas canvas(p);
    static std::array<float, 3 * 4096> paint_on_brush;
    float *carry = paint_on_brush.data();
    for_each_brush(canvas.side, canvas.side, [&](int32_t x, int32_t y) {
        Cust_Smear_helper2(x, y, brush, brush, 0.8F, 0.3F, canvas.side, canvas.side, p.r, carry, carry + 4096,
                           carry + 8192, canvas.planes[0], canvas.planes[1], canvas.planes[2]);
    });
}

// A row of the picture's first plane at a time, a third of its pixels.
void display_rows(const Picture &p) {
    const int32_t count = p.width / 3;
    const auto radius = static_cast<float>(count) * 0.5F;
    for (int32_t y = 0; y < p.height; ++y)
        brush_preview_helper(p.to_r, count, y, radius, static_cast<float>(p.height) * 0.5F, radius, radius, 200, 90.5F,
                             10, 0.75F, y * p.width);
}

void clone(const Picture &p) {
    xclonefill(p.width, p.height, 311, -97, 200, p.quads(), p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
}

void graded_lines(const Picture &p) {
    for (int32_t y = 0; y < p.height; ++y)
        xGradAALine_b(0, static_cast<float>(y), static_cast<float>(p.x_max()), static_cast<float>(y * 7 % p.height),
                      200, 90.5F, 10, 0, 255, 99.5F, p.width, p.height, p.to_r, p.to_g, p.to_b);
}

// A quadrilateral over nearly all of the picture, from a picture of the same size.
std::array<float, 8> corners(const Picture &p) {
    const auto right = static_cast<float>(p.width);
    const auto bottom = static_cast<float>(p.height);
    return {right * 0.05F, 3, right, -9, right * 0.97F, bottom, 2, bottom * 0.9F};
}

template <int32_t smooth> void plain_fill(const Picture &p) {
    xFillPoly4_p(corners(p).data(), p.r, p.g, p.b, p.width, p.height, p.to_r, p.to_g, p.to_b, p.width, p.height, 0.75F,
                 smooth);
}

void alpha_fill(const Picture &p) {
    xFillPoly4_Alpha_p(corners(p).data(), p.r, p.g, p.b, p.quads(), p.width, p.height, p.to_r, p.to_g, p.to_b, p.width,
                       p.height, 0.75F, 1);
}

void tinted_fill(const Picture &p) {
    xFillPoly4_Alpha_p_Tinted(corners(p).data(), p.r, p.g, p.b, p.quads(), p.width, p.height, p.to_r, p.to_g, p.to_b,
                              p.width, p.height, 0.75F, 1, 200, 99, 255);
}

void outline(const Picture &p) { xInitMarquee(p.r, p.to_r, p.width, p.height, 127, 4, 1, 1); }

const Case cases[] = {
    {"CustomBrushBlit, 64 pixels", {.bytes = 10}, stamps},
    {"Cust_Smear_helper, 64 pixels", {.bytes = 13}, byte_smears},
    {"Cust_Smear_helper2, 64 pixels", {.bytes = 49, .rows = FloatCanvas::rows}, float_smears},
    {"brush_preview_helper", {.bytes = 2, .note = "a third of the pixels"}, display_rows},
    {"xclonefill", {.bytes = 10, .parallel = true}, clone},
    {"xGradAALine_b", {.bytes = 24, .note = "a sample of 2 × 2 pixels for each pixel"}, graded_lines},
    {"xFillPoly4_p, nearest", {.bytes = 9, .parallel = true, .note = "samples one by one"}, plain_fill<0>},
    {"xFillPoly4_p, smooth", {.bytes = 9, .parallel = true}, plain_fill<1>},
    {"xFillPoly4_Alpha_p", {.bytes = 10, .parallel = true}, alpha_fill},
    {"xFillPoly4_Alpha_p_Tinted", {.bytes = 10, .parallel = true}, tinted_fill},
    {"xInitMarquee", {.bytes = 2, .parallel = true}, outline},
};

const Family paint("paint: brushes", cases);

} // namespace
} // namespace tavik_bench
