// Views of meshes, for recipes that draw in space.
#pragma once

#include <array>
#include <vector>

#include "host/image.h"
#include "tavik/raster/raster.h"

namespace gallery {

using Matrix = std::array<float, 16>;

// A view from above the horizon onto the origin from `distance`, with z up in the model and y down on its map: turned
// about the vertical axis, then tilted. The angles come as cosine and sine.
struct ViewPoint {
    float turn_cosine, turn_sine;
    float tilt_cosine, tilt_sine;
    float distance, zoom, aspect;
};
Matrix view_from(const ViewPoint &point);

// An image with a depth for each pixel.
struct Canvas {
    Image &image;
    std::vector<float> depth;

    explicit Canvas(Image &target);

    // A record with the canvas for its target.
    tavik_triangle triangle();
    // The depth plane in greys, the nearest white.
    Image picture_of_depth() const;
};

} // namespace gallery
