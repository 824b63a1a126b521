#include "tavik/lighting/lighting.h"

#include <algorithm>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

// Two lamps above the picture's left and right.
const float lamps[24] = {300, 400, 150, 1,    0.8F, 0.5F, 20000, 1, 1, 1, 9000, 20,
                         900, 200, 90,  0.4F, 0.5F, 1,    20000, 1, 1, 1, 9000, 30};

// The pictures' float buffers hold a plane; so many rows of normals are three of them.
constexpr int32_t lit_rows = 48;

const Case cases[] = {
    {"GetPointLight",
     {.bytes = 0, .rows = 1, .note = "one row of calls; the power takes most of the time"},
     [](const Picture &p) {
         const float view[3] = {0, 0, 1};
         for (int32_t i = 0; i < p.width; ++i) GetPointLight(p.to_floats, lamps, p.floats + i, view, view);
     }},
    {"x_F_Convolve_Normals",
     {.bytes = 16, .parallel = true, .rows = lit_rows},
     [](const Picture &p) { x_F_Convolve_Normals(p.width, lit_rows, 0.1F, p.floats, p.to_floats); }},
    {"xNormalMap",
     {.bytes = 4, .parallel = true},
     [](const Picture &p) { xNormalMap(p.width, p.height, 0.1F, 0, p.r, p.to_r, p.to_g, p.to_b); }},
    {"xLighting, 2 lamps",
     {.bytes = 22, .parallel = true, .rows = lit_rows},
     [](const Picture &p) {
         xLighting(p.width, lit_rows, 0.1F, 1, lamps, 2, p.floats, p.floats, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"CPU_hightmap_r2",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { CPU_hightmap_r2(p.width, p.height, 0.1F, 1, 1, 1, 0.2F, p.r, p.to_r); }},
    {"CPU_hightmap_r3",
     {.bytes = 7, .parallel = true},
     [](const Picture &p) {
         CPU_hightmap_r3(p.width, p.height, 0.1F, 1, 1, 1, 0.2F, 0.5F, 20, p.r, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"SphereInnards",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         SphereInnards(p.width, p.height, static_cast<float>(p.width) / 2, static_cast<float>(p.height) / 2,
                       static_cast<float>(p.height) / 2, 1.5F, 4, 255, 255, 255, 0.5F, p.r, p.g, p.b, p.to_r, p.to_g,
                       p.to_b);
     }},
    {"xBubbleShadow",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         xBubbleShadow(p.width, p.height, static_cast<float>(p.width) / 2, static_cast<float>(p.height) / 2,
                       static_cast<float>(p.height) / 2, 0.3F, 0.1F, 0, p.to_r, p.to_g, p.to_b);
     }},
    {"xOcclusionAdder, 16 steps",
     {.bytes = 8, .parallel = true},
     [](const Picture &p) { xOcclusionAdder(p.width, p.height, p.floats, 30, 32, 16, 0.1F, p.to_floats); }},
    {"xOcclusionBlender",
     {.bytes = 10, .parallel = true},
     [](const Picture &p) { xOcclusionBlender(p.width, p.height, p.floats, 8, 0.001F, p.to_r, p.to_g, p.to_b); }},
    {"CPUxDoOcclusion_f, 8 directions of 16 steps",
     {.bytes = 8, .parallel = true},
     [](const Picture &p) { CPUxDoOcclusion_f(p.width, p.height, p.floats, 8, 32, 16, 0.1F, p.to_floats); }},
    {"xDoOcclusion, 8 directions of 16 steps",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { xDoOcclusion(p.width, p.height, p.r, 8, 32, 16, 0.1F, p.to_r); }},
    {"xDoRaytraceShadow, 32 steps",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { xDoRaytraceShadow(p.width, p.height, p.floats, 220, 0.8F, 32, 0.3F, p.to_r); }},
    {"xFindMinMax_f",
     {.bytes = 4, .parallel = true},
     [](const Picture &p) { xFindMinMax_f(p.width, p.height, p.floats, p.to_floats, p.to_floats + 1); }},
    {"xDifferenceKernel",
     {.bytes = 8, .parallel = true},
     [](const Picture &p) { xDifferenceKernel(p.width, p.height, 3, 1, p.floats, p.to_floats); }},
    {"xApplySlope",
     {.bytes = 12, .parallel = true},
     [](const Picture &p) { xApplySlope(p.width, p.height, 3, p.floats, p.floats, p.to_floats); }},
    {"erosionsubtracter",
     {.bytes = 9, .parallel = true},
     [](const Picture &p) { erosionsubtracter(p.width, p.height, 2, p.floats, p.to_floats, p.to_r); }},
    {"xDoErode, a droplet for 16 pixels",
     {.bytes = 8, .parallel = true, .note = "each step of a droplet follows from the one before"},
     [](const Picture &p) {
         const float settings[] = {0.05F, 2, 0.01F, 0.1F, 0.1F, 0.02F, 4, 3};
         std::copy_n(p.floats, p.count(), p.to_floats);
         xDoErode(p.width, p.height, p.to_floats, 64, 256, 30, 1, 1, settings);
     }},
};

const Family lighting("lighting", cases);

} // namespace
} // namespace tavik_bench
