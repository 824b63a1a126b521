#include "tavik/lighting/lighting.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace {

using Vector = std::array<float, 3>;
using Light = std::array<float, 12>;
using Lit = std::array<float, 6>;

constexpr float tiny = 1e-30F;
constexpr float infinity = std::numeric_limits<float>::infinity();

TEST(Lighting, LengthsAndNormalizedVectors) {
    EXPECT_EQ(VectorLength(Vector{2, 3, 6}.data()), 7);
    EXPECT_EQ(VectorLength(Vector{tiny, tiny, tiny}.data()), 0);
    // (1 + 2^-24) + 2^-24 is 1 where 1 + (2^-24 + 2^-24) is not.
    EXPECT_EQ(VectorLength(Vector{1, 0x1p-12F, 0x1p-12F}.data()), 1);
    for (const auto &[v, expected] : {std::pair<Vector, Vector>{{3, 0, 4}, {0.6F, 0, 0.8F}},
                                      {{0, 0, 0}, {0, 0, 0}},
                                      {{tiny, 0, -tiny}, {tiny, 0, -tiny}},
                                      // 7 × (1/49.4974747), where 7/49.4974747 is one bit above.
                                      {{7, 0, 49}, {7 * (1 / std::sqrt(2450.0F)), 0, 49 * (1 / std::sqrt(2450.0F))}}}) {
        Vector result = v;
        Normalize(result.data());
        EXPECT_EQ(result, expected);
    }
}

TEST(Lighting, DotProductsAreRoundedOnce) {
    EXPECT_EQ(DotProduct(Vector{1, 2, 3}.data(), Vector{4, -5, 6}.data()), 12);
    EXPECT_EQ(DotProduct(Vector{1e20F, 1, -1e20F}.data(), Vector{1e18F, 3, 1e18F}.data()), 0);
    // 2^-24 three times: each alone would be lost beside 1.
    EXPECT_EQ(DotProduct(Vector{1, 0x1p-12F, 0x1p-12F}.data(), Vector{1, 0x1p-12F, 0x1p-12F}.data()), 1 + 0x1p-23F);
}

TEST(Lighting, CrossProductsAndNormals) {
    Vector a = {1, 2, 3};
    const Vector b = {-4, 5, 7};
    const Vector expected = {-1, -19, 13};
    Vector result;
    EXPECT_EQ(CrossProduct(result.data(), a.data(), b.data()), result.data());
    EXPECT_EQ(result, expected);
    EXPECT_EQ(CrossProduct(a.data(), a.data(), b.data()), a.data());
    EXPECT_EQ(a, expected);

    EXPECT_EQ(CalculateNormal(result.data(), Vector{0, 0, 0}.data(), Vector{1, 0, 0}.data(), Vector{1, 1, 0}.data()),
              result.data());
    EXPECT_EQ(result, (Vector{0, 0, 1}));
    // The edge from the first corner to the third would round differently.
    CalculateNormal(result.data(), Vector{1e8F, 0, 0}.data(), Vector{0, 0, 0}.data(), Vector{3, 5, 0}.data());
    EXPECT_EQ(result, (Vector{0, 0, -5e8F}));
}

TEST(Lighting, DistancesAreFastRoots) {
    EXPECT_EQ(Distance_3d(0, 3, 0, 4, 0, 0), 5.125F);
    EXPECT_EQ(Distance_3d(1, 1, 7, 3, 2, 2), 4);
    EXPECT_EQ(Distance_3d(0, 0, 0, 0, -3, 1), 4);
}

TEST(Lighting, InverseSquareFalloff) {
    EXPECT_EQ(InverseSquareLight(2, 8, 1), 2);
    EXPECT_EQ(InverseSquareLight(6, 8, 3), 2);
    EXPECT_EQ(InverseSquareLight(0, 10, 1), 0);
    EXPECT_EQ(InverseSquareLight(tiny, 10, 1), 0);
    EXPECT_EQ(InverseSquareLight(1, 10, 0), 0); // 10 over infinity
}

TEST(Lighting, PointLights) {
    struct Case {
        Light light;
        Vector point, view, normal;
        Lit expected;
    };
    constexpr float untouched = -7;
    const Case cases[] = {
        // Straight above: all cosines are 1.
        {{0, 0, 2, 1, 0.5F, 0.25F, 1, 1, 0, 2, 3, 20},
         {0, 0, 0},
         {0, 0, 1},
         {0, 0, 1},
         {0.25F, 0.125F, 0.0625F, 0.75F, 0, 1.5F}},
        // Aslant: the cosine is 0.8, the half vector (0.6, 0, 1.8) leans by cos² = 0.9.
        {{3, 0, 4, 1, 1, 1, 25, 1, 1, 1, 25, 2}, {0, 0, 0}, {0, 0, 1}, {0, 0, 1}, {0.8F, 0.8F, 0.8F, 0.9F, 0.9F, 0.9F}},
        // From behind, nothing but the power 0 of 0.
        {{0, 0, -2, 1, 1, 1, 4, 1, 1, 1, 4, 3}, {0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0, 0, 0, 0}},
        {{0, 0, -2, 1, 1, 1, 4, 1, 1, 1, 4, 0}, {0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0, 1, 1, 1}},
        // A long normal stays long until its cosines are held to 1.
        {{0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 5}, {0, 0, 0}, {0, 0, 1}, {0, 0, 9}, {1, 1, 1, 1, 1, 1}},
        {{0, 0, 2, 1, 1, 1, 0, 1, 1, 1, 5, 1},
         {0, 0, 0},
         {0, 0, 1},
         {0, 0, 1},
         {untouched, untouched, untouched, untouched, untouched, untouched}},
        {{0, 0, 2, 1, 1, 1, -1, 1, 1, 1, 5, 1},
         {0, 0, 0},
         {0, 0, 1},
         {0, 0, 1},
         {untouched, untouched, untouched, untouched, untouched, untouched}},
        // In the point itself.
        {{0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1},
         {0, 0, 0},
         {0, 0, 1},
         {0, 0, 1},
         {infinity, infinity, infinity, infinity, infinity, infinity}},
    };
    for (const Case &c : cases) {
        Lit lit;
        lit.fill(untouched);
        EXPECT_EQ(GetPointLight(lit.data(), c.light.data(), c.point.data(), c.view.data(), c.normal.data()),
                  lit.data());
        for (std::size_t i = 0; i < lit.size(); ++i) EXPECT_FLOAT_EQ(lit[i], c.expected[i]) << &c - cases << ' ' << i;
    }
}

} // namespace
