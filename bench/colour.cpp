#include "tavik/colour/colour.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const float matrix[16] = {0.8F, 0.1F, 0.05F, 0, 0.15F, 0.85F, 0.05F, 0, 0.05F, 0.05F, 0.9F, 0, 4, -6, 10, 0};

const Case cases[] = {
    {"xHue", {.bytes = 6}, [](const Picture &p) { xHue(p.x_max(), p.y_max(), 30, 1, 1, p.to_r, p.to_g, p.to_b); }},
    {"xDayForNight", {.bytes = 6}, [](const Picture &p) { xDayForNight(p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"xFogFilter",
     {.bytes = 6, .note = "in double lanes"},
     [](const Picture &p) { xFogFilter(p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"xSepia",
     {.bytes = 6, .parallel = true, .in_place_too = true},
     [](const Picture &p) { xSepia(p.width, p.height, 0.1F, 0.8F, 0.9F, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b); }},
    {"xDuotone",
     {.bytes = 6, .parallel = true, .in_place_too = true},
     [](const Picture &p) {
         xDuotone(p.width, p.height, 255, 240, 200, 20, 30, 80, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"colortograyscale_trim",
     {.bytes = 7, .parallel = true},
     [](const Picture &p) { colortograyscale_trim(p.width, p.height, p.r, p.g, p.b, p.to_floats); }},
    {"xColorMatrix",
     {.bytes = 6, .in_place_too = true},
     [](const Picture &p) { xColorMatrix(p.x_max(), p.y_max(), p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, matrix); }},
    {"xColorMatrix_ppl",
     {.bytes = 6, .parallel = true, .in_place_too = true},
     [](const Picture &p) { xColorMatrix_ppl(p.width, p.height, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, matrix); }},
    {"xFastHSV",
     {.bytes = 6, .in_place_too = true},
     [](const Picture &p) { xFastHSV(p.width, p.height, 30, 1.2F, 1, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b); }},
    {"FastHSV_ppl",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) { FastHSV_ppl(p.width, p.height, 30, 1.2F, 1, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b); }},
    {"FastHSVandRGB",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         FastHSVandRGB(p.width, p.height, 30, 1.2F, 1, 3, 2, 1, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"xColorToGrayscale",
     {.bytes = 4, .parallel = true},
     [](const Picture &p) { xColorToGrayscale(p.width, p.height, p.r, p.g, p.b, p.to_r); }},
    {"xTritone",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         xTritone(p.width, p.height, 255, 250, 240, 200, 120, 90, 10, 20, 60, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"xKeyToAlpha",
     {.bytes = 4, .parallel = true},
     [](const Picture &p) { xKeyToAlpha(p.width, p.height, 30, 200, 40, 20, 60, p.r, p.g, p.b, p.to_r); }},
};

const Family colour("colour", cases);

} // namespace
} // namespace tavik_bench
