#include "tavik/frame/sampling.h"

#include <array>

#define TAVIK_ROWS "tavik/frame/sampling_rows.inl"
#include "tavik/frame/each_level.inl"

namespace tavik {

const PerLevel<SampleBilinearRow> sample_bilinear = TAVIK_EVERY_LEVEL(sample_bilinear);
const PerLevel<SampleBilinearRow> sample_bilinear_wrapped = TAVIK_EVERY_LEVEL(sample_bilinear_wrapped);
const PerLevel<RoundBytesRow> round_bytes = TAVIK_EVERY_LEVEL(round_bytes);

void sample_three_planes(const uint8_t *const src[3], int32_t width, int32_t height, const float *x, const float *y,
                         uint8_t *const dst[3], std::size_t count, const PerLevel<SampleBilinearRow> &sample) {
    std::array<float, sampling_run> samples;
    for (int plane = 0; plane < 3; ++plane) {
        sample.active()(src[plane], width, height, x, y, samples.data(), count);
        round_bytes.active()(samples.data(), dst[plane], count);
    }
}

} // namespace tavik
