#include "tavik/framefile/framefile.h"

#include <cstring>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const Case cases[] = {
    {"AVI_extract",
     {.bytes = 6, .rows = 64},
     [](const Picture &p) { AVI_extract(p.x_max(), 64, 3 * 64 * p.x_max(), p.to_r, p.to_g, p.to_b, p.quads()); }},
    {"FilmstripHelper",
     {.bytes = 2, .note = "each position is the one before plus a step"},
     [](const Picture &p) { FilmstripHelper(0.5F, 0, p.count() - 1, p.r, p.to_r); }},
    {"SuperThumb, to a quarter",
     {.bytes = 3, .note = "a gather of four samples per plane and sample"},
     [](const Picture &p) {
         SuperThumb(p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, p.to_quads(), p.x_max(), p.y_max(), p.width / 4,
                    p.height / 4);
     }},
    {"p_scale_to_dib, as large",
     {.bytes = 7, .note = "plain loads at every level"},
     [](const Picture &p) {
         p_scale_to_dib(p.r, p.g, p.b, p.to_pixels, p.width, p.height, p.width, p.height, p.width);
     }},
    {"p_scale_to_dib, twice as large",
     {.bytes = 4.75, .note = "every second row is copied"},
     [](const Picture &p) {
         p_scale_to_dib(p.r, p.g, p.b, p.to_pixels, p.width / 2, p.height / 2, p.width, p.height, p.width);
     }},
    {"xRLE_Encode_byte, one value",
     {.bytes = 1},
     [](const Picture &p) {
         std::memset(p.to_g, 7, static_cast<std::size_t>(p.count()));
         *p.to_longs() = p.count();
         xRLE_Encode_byte(p.to_g, p.to_r, p.to_longs());
     }},
    {"xRLE_Encode_byte, noise",
     {.bytes = 1.5, .note = "ends in the middle, when it has become too long"},
     [](const Picture &p) {
         *p.to_longs() = p.count();
         xRLE_Encode_byte(p.r, p.to_r, p.to_longs());
     }},
};

const Family framefile("framefile", cases);

} // namespace
} // namespace tavik_bench
