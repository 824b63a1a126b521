// The depth-tested triangle, for the exports that draw many.
#pragma once

#include <cstdint>

#include "tavik/raster/raster.h"

namespace tavik {

// Draws the rows of a triangle that lie in [first_row, last_row), of those inside its own limits, and sorts the
// record's vertices.
void draw_depth_triangle(tavik_triangle &triangle, int32_t first_row, int32_t last_row);

} // namespace tavik
