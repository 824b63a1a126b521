#include "tavik/filters/filters.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const float light[3] = {0.5F, 0.25F, 0.7F};

const Case cases[] = {
    {"Convolve8",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { Convolve8(p.to_r, p.r, p.x_max(), p.y_max(), 1, 2, 1, 2, 4, 2, 1, 2, 1, 16, 0); }},
    {"Convolve8, weights of 32 bits",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { Convolve8(p.to_r, p.r, p.x_max(), p.y_max(), 1, 2, 1, 2, 400000, 2, 1, 2, 1, 400012, 0); }},
    {"xGradientConvolve",
     {.bytes = 15, .rows = 64},
     [](const Picture &p) { xGradientConvolve(p.x_max(), 64, p.floats, light, 1, p.to_r, p.to_g, p.to_b); }},
    {"xGradientConvolve8",
     {.bytes = 13, .rows = 64},
     [](const Picture &p) { xGradientConvolve8(p.x_max(), 64, p.floats, light, 1, p.to_r); }},
    {"xMedian", {.bytes = 2}, [](const Picture &p) { xMedian(p.r, p.to_r, p.x_max(), p.y_max()); }},
    {"Maximum_s, radius 2", {.bytes = 2}, [](const Picture &p) { Maximum_s(p.r, p.to_r, p.x_max(), p.y_max(), 2); }},
    {"Maximum_s, radius 20", {.bytes = 2}, [](const Picture &p) { Maximum_s(p.r, p.to_r, p.x_max(), p.y_max(), 20); }},
    {"Minimum_s, radius 2", {.bytes = 2}, [](const Picture &p) { Minimum_s(p.r, p.to_r, p.x_max(), p.y_max(), 2); }},
    {"xBlur, radius 6, 3 passes",
     {.bytes = 2, .parallel = true, .note = "keeps eight fraction bits throughout, the equivalent none"},
     [](const Picture &p) { xBlur(p.width, p.height, 6, 3, p.r, p.to_r); }},
};

const Family filters("filters", cases);

} // namespace
} // namespace tavik_bench
