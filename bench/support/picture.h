// The buffers that benchmarked exports read and write.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tavik_bench {

// The parts of a picture that a case hands to an export. Sources hold noise and stay as they are; destinations are
// named to_*.
struct Picture {
    int32_t width;
    int32_t height;

    const uint8_t *r;
    const uint8_t *g;
    const uint8_t *b;
    uint8_t *to_r;
    uint8_t *to_g;
    uint8_t *to_b;

    const float *floats; // 0 .. 256, with fractions
    float *to_floats;

    const uint32_t *pixels;
    uint32_t *to_pixels;

    const uint8_t *table; // 256 bytes
    int32_t *histograms;  // of three planes

    // The pixels as other 32-bit elements.
    const int32_t *longs() const { return reinterpret_cast<const int32_t *>(pixels); }
    int32_t *to_longs() const { return reinterpret_cast<int32_t *>(to_pixels); }
    const uint8_t *quads() const { return reinterpret_cast<const uint8_t *>(pixels); }
    uint8_t *to_quads() const { return reinterpret_cast<uint8_t *>(to_pixels); }

    int32_t x_max() const { return width - 1; }
    int32_t y_max() const { return height - 1; }
    int32_t count() const { return width * height; }
};

// Owns the buffers of one size of picture. They begin at cache lines, at different places within a page, so that
// no store is mistaken for a later load.
class PictureBuffers {
  public:
    PictureBuffers(int32_t width, int32_t height);

    const Picture &picture() const { return parts; }

    // The picture with its destination planes for sources too.
    Picture in_place() const;

    // Makes the destination planes noise again after exports that wear it away.
    void refresh();

  private:
    template <class Element> Element *take(std::size_t count);

    std::vector<std::byte> memory;
    std::byte *unused;
    std::array<int32_t, 768> histograms = {};
    Picture parts = {};
};

} // namespace tavik_bench
