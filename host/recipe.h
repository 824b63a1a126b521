// A recipe makes one picture of the gallery; a family is one section. Both are rows of tables in recipes_*.cpp.
#pragma once

#include <string>
#include <vector>

namespace gallery {

class Run;

struct Recipe {
    const char *name; // of the picture's file, too
    const char *title;
    const char *sentence;
    std::vector<std::string> exports; // all that it calls
    void (*make)(Run &run);
};

struct Family {
    const char *name;
    const char *sentence;
    std::vector<Recipe> recipes;
};

Family tone_family();
Family blend_family();
Family composite_family();
Family colour_family();
Family filters_family();
Family lighting_family();
Family raster_family();
Family convert_family();
Family memops_family();
Family resample_family();
Family transforms_family();
Family warps_family();
Family projections_family();
Family scalar_family();
Family functions_family();
Family settings_family();
Family pixels_family();
Family dither_family();
Family clouds_family();
Family generators_family();
Family gradients_family();
Family fractals_family();
Family terrain_family();
Family paint_family();
Family brushes_family();
Family foliage_family();
Family blockmatch_family();
Family framefile_family();
Family frame_family();

// In the order of the page.
std::vector<Family> families();

} // namespace gallery
