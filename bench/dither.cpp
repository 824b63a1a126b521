#include "tavik/dither/dither.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const std::string draws = "drawing the numbers takes most of the time";

const Case cases[] = {
    {"x8BitOrderedDither",
     {.bytes = 6},
     [](const Picture &p) {
         x8BitOrderedDither(p.width, 0, p.height, p.to_r, p.to_g, p.to_b, p.table, p.table, p.table, p.table);
     }},
    {"x8BitRandomDither",
     {.bytes = 6, .note = draws},
     [](const Picture &p) {
         x8BitRandomDither(p.width, 0, p.height, p.to_r, p.to_g, p.to_b, p.table, p.table, p.table);
     }},
    {"x1bitorderedDither",
     {.bytes = 6},
     [](const Picture &p) { x1bitorderedDither(p.width, p.height, p.to_r, p.to_g, p.to_b, p.table); }},
    {"x1bitranddither",
     {.bytes = 6, .note = draws},
     [](const Picture &p) { x1bitranddither(p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"xgrain",
     {.bytes = 24, .note = draws},
     [](const Picture &p) { xgrain(p.width, p.height, 0, 0, 0, p.to_floats, p.to_floats, p.to_floats); }},
    {"FastJitter",
     {.bytes = 6, .parallel = true, .note = "gathers from places that differ from pixel to pixel"},
     [](const Picture &p) { FastJitter(p.to_r, p.to_g, p.to_b, 0, p.x_max(), p.y_max(), p.r, p.g, p.b, 8); }},
    {"xfilmgrainHelper",
     {.bytes = 6, .parallel = true, .note = "four gathers a sample"},
     [](const Picture &p) {
         xfilmgrainHelper(p.width, p.height, 64, 64, 0.7F, 3.3F, 5.5F, 0.1F, p.floats, p.floats, p.floats, p.to_r,
                          p.to_g, p.to_b);
     }},
    {"xjitter",
     {.bytes = 6, .parallel = true, .note = "gathers from places that differ from pixel to pixel"},
     [](const Picture &p) { xjitter(p.width, p.height, 4, 1, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b); }},
    {"xjitter2",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) { xjitter2(p.width, p.height, 4, 9, 1, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b); }},
};

const Family family("dither", cases);

} // namespace
} // namespace tavik_bench
