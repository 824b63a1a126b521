#include "tavik/frame/frame.h"

#include <cstddef>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/bytes.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

TAVIK_EXPORT(void) TestPPL2(uint8_t *buffer, int32_t height, int32_t width) {
    const std::size_t stride = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        complement.active()(buffer + begin * stride, (end - begin) * stride);
    });
}

TAVIK_EXPORT(int32_t) CalcMem(int32_t a, int32_t b, int32_t c) {
    constexpr double mebibytes_per_pixel = 3.0 / 1048576.0;
    return truncate(static_cast<double>(a) * b * c * mebibytes_per_pixel);
}

TAVIK_EXPORT(void) seed_rand(uint32_t seed) { seed_random(seed); }
