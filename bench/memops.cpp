#include "tavik/memops/memops.h"

#include <algorithm>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const Case cases[] = {
    {"moveSSE",
     {.bytes = 8, .note = "memmove at every level"},
     [](const Picture &p) { moveSSE(p.pixels, p.to_pixels, p.count()); }},
    {"moveASM",
     {.bytes = 8, .note = "memmove at every level"},
     [](const Picture &p) { moveASM(p.pixels, p.to_pixels, 4 * p.count()); }},
    {"add_SSE", {.bytes = 3, .in_place_too = true}, [](const Picture &p) { add_SSE(p.width, p.height, p.r, p.to_r); }},
    {"sub_SSE", {.bytes = 3, .in_place_too = true}, [](const Picture &p) { sub_SSE(p.width, p.height, p.r, p.to_r); }},
    {"Mult_SSE",
     {.bytes = 3, .in_place_too = true},
     [](const Picture &p) { Mult_SSE(p.width, p.height, p.r, p.to_r); }},
    {"quicksort",
     {.bytes = 4, .note = "counting is scalar; copies the noise first"},
     [](const Picture &p) {
         std::copy_n(p.r, p.count(), p.to_r);
         quicksort(p.to_r, p.count());
     }},
    {"xParallelSort",
     {.bytes = 8, .parallel = true, .rows = 1, .note = "one row, so many phases as pixels, which race"},
     [](const Picture &p) {
         std::copy_n(p.floats, p.width, p.to_floats);
         xParallelSort(p.to_floats, p.width);
     }},
};

const Family memops("memops", cases);

} // namespace
} // namespace tavik_bench
