#include "tavik/convert/convert.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const Case cases[] = {
    {"SetFloat", {.bytes = 4}, [](const Picture &p) { SetFloat(p.count(), 0x3F800000, p.to_floats); }},
    {"xFillBuff", {.bytes = 4}, [](const Picture &p) { xFillBuff(p.width, p.height, 0x00FF8040, p.to_pixels); }},
    {"char_to_float",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { char_to_float(p.width, p.height, p.r, p.to_floats); }},
    {"float_to_char",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { float_to_char(p.width, p.height, p.floats, p.to_r); }},
    {"float_to_char_clamp",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { float_to_char_clamp(p.width, p.height, p.floats, p.to_r); }},
    {"char_to_long",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { char_to_long(p.width, p.height, p.r, p.to_longs()); }},
    {"long_to_char",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { long_to_char(p.width, p.height, p.longs(), p.to_r); }},
    {"RGB_to_bbytes",
     {.bytes = 7, .parallel = true},
     [](const Picture &p) { RGB_to_bbytes(p.x_max(), p.height, p.width, 0, p.r, p.g, p.b, p.to_pixels); }},
    {"bbytes_to_RGB",
     {.bytes = 7, .parallel = true, .note = "the lines of three planes are read before they are written"},
     [](const Picture &p) { bbytes_to_RGB(p.x_max(), p.height, p.width, 0, p.to_r, p.to_g, p.to_b, p.pixels); }},
    {"LongRGBV_to_RGB_array",
     {.bytes = 7},
     [](const Picture &p) { LongRGBV_to_RGB_array(p.r, p.g, p.b, p.to_quads(), p.x_max(), p.y_max()); }},
    {"Long_to_RGBV_array",
     {.bytes = 7, .note = "the lines of three planes are read before they are written"},
     [](const Picture &p) { Long_to_RGBV_array(p.to_r, p.to_g, p.to_b, p.quads(), p.x_max(), p.y_max()); }},
    {"NewSetValue",
     {.bytes = 6, .parallel = true, .in_place_too = true, .note = "counting into a histogram is scalar"},
     [](const Picture &p) {
         NewSetValue(p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, p.table, p.histograms, p.width, p.height);
     }},
};

const Family convert("convert", cases);

} // namespace
} // namespace tavik_bench
