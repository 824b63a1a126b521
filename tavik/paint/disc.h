// Feathered discs painted row by row: what the dabs and the particle clouds share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/vector_level.h"

namespace tavik {

// One colour, solid up to the radius, that fades out over the feather around it.
struct Disc {
    float cx;
    float cy;
    float radius;
    float feather;
    std::array<float, 3> colour;
    float opacity; // 0 .. 1
};

// Columns left .. right − 1 of rows top .. bottom − 1.
struct Box {
    int32_t left;
    int32_t right;
    int32_t top;
    int32_t bottom;

    bool empty() const { return left >= right || top >= bottom; }
};

enum class RowBelow { excluded, included };

// Where the disc may paint: inside planes of upper bounds, never in column x_max or row y_max. Serial dabs also visit
// the row just below their rim.
Box box_of(const Disc &disc, int32_t x_max, int32_t y_max, RowBelow row_below);

template <class Sample> struct Canvas {
    int32_t x_max;
    std::array<Sample *, 3> planes;
    // Planes may hold only so much of a picture, from this column and row on.
    int32_t left = 0;
    int32_t top = 0;

    // The index of column 0 in a row, modulo 2^64 or 2^32.
    std::size_t row(int32_t y) const {
        return static_cast<std::size_t>(y - top) * (static_cast<std::size_t>(x_max - left) + 1) -
               static_cast<std::size_t>(left);
    }
};

// Paints the box's part of a disc in replace mode. The box is not empty and lies within box_of.
template <class Sample> using PaintDisc = void(const Disc &disc, const Box &box, const Canvas<Sample> &canvas);

extern const PerLevel<PaintDisc<uint8_t>> replace_bytes;
extern const PerLevel<PaintDisc<float>> replace_floats;

// Paints a box, which may be empty. The rows of a wide box of bytes are a few cache lines each, too far apart for the
// processor to see a pattern: they are painted in bands, each fetched while the one above is painted.
template <class Paint, class Sample>
void paint_box(const Paint &paint, const Disc &disc, const Box &box, const Canvas<Sample> &canvas) {
    if (box.empty()) return;
    constexpr int32_t wide = 128;
    if (sizeof(Sample) > 1 || box.right - box.left < wide) return paint(disc, box, canvas);
    constexpr int32_t band_rows = 4;
    const auto band_from = [&](int32_t top) {
        return Box{box.left, box.right, top, top + std::min(box.bottom - top, band_rows)};
    };
    for (Box band = band_from(box.top); band.top < box.bottom; band = band_from(band.bottom)) {
        const Box below = band_from(band.bottom);
        for (int32_t y = below.top; y < below.bottom; ++y)
            for (const Sample *plane : canvas.planes)
                prefetch(plane, canvas.row(y) + static_cast<std::size_t>(box.left),
                         canvas.row(y) + static_cast<std::size_t>(box.right));
        paint(disc, band, canvas);
    }
}

} // namespace tavik
