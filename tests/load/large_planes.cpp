// Planes of 20,000 × 20,000 samples: each export must make of the whole plane what it makes of it band by band.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <memory>

#include "tavik/tavik.h"
#include "tests/support/planes.h"

using namespace tavik_test;

namespace {

constexpr int32_t side = 20000;
constexpr int32_t band_rows = 100; // small enough to be written by way of the caches
const std::size_t samples = area(side, side);

struct Case {
    const char *name;
    std::size_t result_bytes; // per sample
    void (*call)(const uint8_t *src, uint8_t *dst, int32_t rows);
};

const Case cases[] = {
    {"TestPPL2", 1,
     [](const uint8_t *src, uint8_t *dst, int32_t rows) {
         std::memcpy(dst, src, area(side, rows));
         TestPPL2(dst, rows, side);
     }},
    {"xInvert", 1,
     [](const uint8_t *src, uint8_t *dst, int32_t rows) {
         std::memcpy(dst, src, area(side, rows));
         xInvert(side - 1, rows - 1, dst);
     }},
    {"AdjustLevels_channel_ppl", 1,
     [](const uint8_t *src, uint8_t *dst, int32_t rows) {
         AdjustLevels_channel_ppl(src, dst, side, rows, 5, 250, 20, 240);
     }},
    {"FastHMirror", 1,
     [](const uint8_t *src, uint8_t *dst, int32_t rows) { FastHMirror(src, dst, side - 1, rows - 1); }},
    {"char_to_float", sizeof(float),
     [](const uint8_t *src, uint8_t *dst, int32_t rows) {
         char_to_float(side, rows, src, reinterpret_cast<float *>(dst));
     }},
    {"RGB_to_bbytes", sizeof(uint32_t),
     [](const uint8_t *src, uint8_t *dst, int32_t rows) {
         RGB_to_bbytes(side - 1, rows, side, 0, src, src, src, reinterpret_cast<uint32_t *>(dst));
     }},
    {"LongRGBV_to_RGB_array", 4,
     [](const uint8_t *src, uint8_t *dst, int32_t rows) {
         LongRGBV_to_RGB_array(src, src, src, dst, side - 1, rows - 1);
     }},
};

// The first row of the band from which on the whole differs, or `side`.
int32_t first_difference(const Case &c, const uint8_t *src, uint8_t *whole, uint8_t *band) {
    std::memset(whole, 0, samples * c.result_bytes); // Some samples stay unwritten.
    c.call(src, whole, side);
    for (int32_t y = 0; y < side; y += band_rows) {
        const std::size_t bytes = area(side, band_rows) * c.result_bytes;
        std::memset(band, 0, bytes);
        c.call(src + area(side, y), band, band_rows);
        if (std::memcmp(whole + area(side, y) * c.result_bytes, band, bytes) != 0) return y;
    }
    return side;
}

} // namespace

int main() {
    std::size_t most = 0;
    for (const Case &c : cases) most = std::max(most, c.result_bytes);
    const auto src = noise(samples, 1);
    const auto whole = std::make_unique_for_overwrite<uint8_t[]>(samples * most);
    const auto band = std::make_unique_for_overwrite<uint8_t[]>(area(side, band_rows) * most);
    bool right = true;
    for (const Case &c : cases) {
        const int32_t row = first_difference(c, src.data(), whole.get(), band.get());
        if (row == side) continue;
        std::cerr << "large_planes: " << c.name << ": the rows from " << row << " on differ from the band's\n";
        right = false;
    }
    if (right) std::cout << std::size(cases) << " exports on planes of " << side << " x " << side << '\n';
    return right ? 0 : 1;
}
