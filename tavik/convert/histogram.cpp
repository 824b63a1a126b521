#include "tavik/convert/convert.h"

#include <algorithm>
#include <array>

#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

namespace {

// Counts into four tables in turn, so that equal neighbours do not wait for each other's increment.
class ByteCounts {
  public:
    void add(const uint8_t *bytes, std::size_t count) {
        std::size_t i = 0;
        for (; i + lanes.size() <= count; i += lanes.size())
            for (std::size_t lane = 0; lane < lanes.size(); ++lane) ++lanes[lane][bytes[i + lane]];
        for (; i < count; ++i) ++lanes[0][bytes[i]];
    }
    uint32_t operator[](std::size_t value) const {
        return lanes[0][value] + lanes[1][value] + lanes[2][value] + lanes[3][value];
    }

  private:
    std::array<std::array<uint32_t, 256>, 4> lanes = {};
};

void map_and_count(const uint8_t *src, uint8_t *dst, std::size_t count, const uint8_t *table, int32_t *histogram) {
    if (!same_or_apart(src, dst, count)) {
        for (std::size_t i = 0; i < count; ++i) {
            dst[i] = table[src[i]];
            ++histogram[dst[i]];
        }
        return;
    }
    // The sources are counted instead of the results, block by block while they are in cache: all that map to
    // one result add up to its count.
    constexpr std::size_t block = 16384;
    const FetchAhead planes(count, src, dst);
    ByteCounts counts;
    for (std::size_t begin = 0; begin < count; begin += block) {
        planes.for_runs(begin, std::min(begin + block, count), [&](std::size_t i, std::size_t n) {
            counts.add(src + i, n);
            map_bytes.active()(src + i, dst + i, n, table);
        });
    }
    for (std::size_t value = 0; value < 256; ++value)
        histogram[table[value]] = wrap_add(histogram[table[value]], static_cast<int32_t>(counts[value]));
}

} // namespace

TAVIK_EXPORT(void)
NewSetValue(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
            uint8_t *dst_b, const uint8_t *table, int32_t *histograms, int32_t width, int32_t height) {
    const std::size_t count = counts(static_cast<int16_t>(width), static_cast<int16_t>(height));
    if (count == 0) return;
    const std::array<const uint8_t *, 3> src = {src_r, src_g, src_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    run_three(count, [&](int32_t channel) {
        const auto index = static_cast<std::size_t>(channel);
        map_and_count(src[index], dst[index], count, table, histograms + 256 * index);
    });
}
