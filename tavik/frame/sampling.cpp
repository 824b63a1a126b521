#include "tavik/frame/sampling.h"

#define TAVIK_ROWS "tavik/frame/sampling_rows.inl"
#include "tavik/frame/each_level.inl"

namespace tavik {

const PerLevel<SampleBilinearRow> sample_bilinear = TAVIK_EVERY_LEVEL(sample_bilinear);

} // namespace tavik
