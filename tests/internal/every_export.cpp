// Each export of the list that is given memory has a call in its family's list, and so is run against inaccessible
// pages, at every vector level, by the fuzzer and from many threads; the others are named here.
#include <algorithm>
#include <set>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

namespace {

constexpr std::string_view exports[] = {
#include "export_names.inc"
};

// Functions of numbers, and of a few values behind pointers.
const std::set<std::string_view> without_buffers = {"ArcInterpolate",
                                                    "Bilerp",
                                                    "Bspline",
                                                    "CalcMem",
                                                    "CalculateNormal",
                                                    "CatmulInterpolate",
                                                    "Clamp",
                                                    "CrossProduct",
                                                    "CubicInterpolate",
                                                    "Distance_3d",
                                                    "DotProduct",
                                                    "FastHSVandRGB",
                                                    "FastPerlinNoise_2D",
                                                    "GDIP_ColorToARGB",
                                                    "GetAddressSingle",
                                                    "GetPointLight",
                                                    "HSV_To_RGB",
                                                    "IntNoise",
                                                    "InvSqrt",
                                                    "InverseSquareLight",
                                                    "LinearInterpolate",
                                                    "Long_To_RGB",
                                                    "MemoryInfo",
                                                    "NewMod",
                                                    "Normalize",
                                                    "RGB_To_HSV",
                                                    "ReadChar",
                                                    "RotatePoint",
                                                    "SSE_SQRT_SS",
                                                    "Saturate",
                                                    "TransformHSV",
                                                    "TransformPoint",
                                                    "VectorLength",
                                                    "WriteChar",
                                                    "arctan2",
                                                    "cosine_x",
                                                    "fast_acos",
                                                    "fastsqrt",
                                                    "glm_perlin_noise3",
                                                    "glm_simplex_noise3",
                                                    "intersectRaySphere",
                                                    "lineIntersection",
                                                    "modulo",
                                                    "rayBoxIntersect",
                                                    "seed_rand",
                                                    "sine_x",
                                                    "smoothstep",
                                                    "sqrt_sse",
                                                    "swap_l",
                                                    "triangle_intersection",
                                                    "triangle_intersection_d",
                                                    "xEase",
                                                    "xRayTriangleIntersect",
                                                    "xceil",
                                                    "xfloor",
                                                    "xshiftL",
                                                    "xshiftR"};

// Tests of their own run these.
const std::set<std::string_view> elsewhere = {
    "kvf_close",     "kvf_getframe", "kvf_getframetoHDC_scaled", "kvf_open", // read files
    "xParallelSort",                                                         // leaves another order each time
};

TEST(Exports, EachThatIsGivenMemoryHasABulkCase) {
    std::set<std::string_view> called;
    for (const auto &family : tavik_test::bulk_families())
        for (const auto &bulk_case : family.cases) called.insert(bulk_case.name);
    for (const std::string_view name : exports)
        EXPECT_EQ(called.count(name) + without_buffers.count(name) + elsewhere.count(name), 1U) << name;
}

} // namespace
