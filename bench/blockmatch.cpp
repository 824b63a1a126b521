#include "tavik/blockmatch/blockmatch.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

// Blocks are compared over a picture of so many rows; a "pixel" of these lines is a comparison or a place tried.
constexpr int32_t band = 48;
constexpr int32_t reach = 16;

// Calls compare(x, y) once for every pixel of one row of the picture.
template <class Compare> void along_row(const Picture &p, const Compare &compare) {
    int32_t sum = 0;
    const int32_t places = p.width - 2 * reach;
    for (int32_t i = 0; i < p.width; ++i) sum += compare(reach + i % places, reach + i % 16);
    *p.to_longs() = sum;
}

constexpr int32_t side = 64; // of searches
constexpr int32_t plane_side = 128;
constexpr int32_t middle = plane_side / 2;

// Calls search(x, y) as often as its places are the pixels of the picture.
template <class Search> void search_all(const Picture &p, const Search &search) {
    for (int32_t i = 0; i < p.count() / (side * side); ++i) {
        int32_t x = middle;
        int32_t y = middle;
        search(&x, &y);
        *p.to_longs() = x + y;
    }
}

const Case cases[] = {
    {"xcompareblock16",
     {.bytes = 512, .rows = 1, .note = "calls; one packed instruction from SSE2 on"},
     [](const Picture &p) {
         along_row(p, [&](int32_t x, int32_t y) { return xcompareblock16(x, y, 20, 20, p.width, band, p.r, p.g); });
     }},
    {"xcompareblock",
     {.bytes = 144, .rows = 1, .note = "calls; one packed instruction from SSE2 on"},
     [](const Picture &p) {
         along_row(p, [&](int32_t x, int32_t y) { return xcompareblock(x, y, 20, 20, p.width, band, p.r, p.g); });
     }},
    {"CompareBlock, 16 × 16",
     {.bytes = 1536, .rows = 1, .note = "calls"},
     [](const Picture &p) {
         along_row(p, [&](int32_t x, int32_t y) {
             return CompareBlock(x, y, 20, 20, 16, p.x_max(), band - 1, p.r, p.g, p.b, p.g, p.b, p.r);
         });
     }},
    {"CompareBlock_mask, 16 × 16",
     {.bytes = 2048, .rows = 1, .note = "calls"},
     [](const Picture &p) {
         along_row(p, [&](int32_t x, int32_t y) {
             return CompareBlock_mask(x, y, 20, 20, 16, p.x_max(), band - 1, p.r, p.g, p.b, p.g, p.b, p.r, p.r, p.b, 9);
         });
     }},
    {"xFindBlock_Channel, 64 × 64 places",
     {.bytes = 256, .parallel = true, .note = "places tried"},
     [](const Picture &p) {
         search_all(p, [&](int32_t *x, int32_t *y) {
             xFindBlock_Channel(x, y, side, 0, plane_side - 1, plane_side - 1, p.r, p.g);
         });
     }},
    {"xFindBlock_RGB, 64 × 64 places",
     {.bytes = 768, .note = "places tried"},
     [](const Picture &p) {
         search_all(p, [&](int32_t *x, int32_t *y) {
             xFindBlock_RGB(middle, middle, x, y, side, 0, plane_side - 1, plane_side - 1, p.r, p.g, p.b, p.g, p.b,
                            p.r);
         });
     }},
    {"xMatchBlockAlf, 64 × 64 places of 16 × 16",
     {.bytes = 512, .parallel = true, .note = "places tried"},
     [](const Picture &p) {
         search_all(p, [&](int32_t *x, int32_t *y) {
             xMatchBlockAlf(middle, middle, x, y, side, 16, plane_side - 1, plane_side - 1, p.r, p.g, p.b, p.r);
         });
     }},
};

const Family blockmatch("blockmatch", cases);

} // namespace
} // namespace tavik_bench
