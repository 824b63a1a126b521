// Feathered discs painted row by row: what the dabs and the particle clouds share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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

} // namespace tavik
