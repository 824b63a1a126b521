#include "host/recipe.h"

namespace gallery {

std::vector<Family> families() {
    return {
        tone_family(),       colour_family(),     blend_family(),    composite_family(),   filters_family(),
        resample_family(),   transforms_family(), warps_family(),    projections_family(), generators_family(),
        gradients_family(),  fractals_family(),   clouds_family(),   dither_family(),      paint_family(),
        brushes_family(),    foliage_family(),    lighting_family(), raster_family(),      terrain_family(),
        blockmatch_family(), framefile_family(),  convert_family(),  memops_family(),      scalar_family(),
        functions_family(),  settings_family(),   pixels_family(),   frame_family(),
    };
}

} // namespace gallery
