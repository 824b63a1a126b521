#include "tavik/scalar/scalar.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

// Folds the bits of function(x(i)) over a sweep: the last bit of any result shows. The expected numbers come from
// the formulas in exact arithmetic, rounded to single precision after each operation.
template <class Argument, class Function> uint32_t fold_sweep(const Argument &x, const Function &function) {
    uint32_t hash = 2166136261U;
    for (int32_t i = 0; i < 4096; ++i) hash = (hash ^ std::bit_cast<uint32_t>(function(x(i)))) * 16777619U;
    return hash;
}

float around_zero(int32_t i) { return static_cast<float>(i - 2048) * 0.371F; }
float positive(int32_t i) { return static_cast<float>(i + 1) * 0.371F; }
float unit(int32_t i) { return static_cast<float>(i) * (1.0F / 4096.0F); }

TEST(Scalar, ApproximationsKeepTheirErrors) {
    EXPECT_EQ(fold_sweep(around_zero, [](float x) { return sine_x(x); }), 0xD8866F0FU);
    EXPECT_EQ(fold_sweep(around_zero, [](float x) { return cosine_x(x); }), 0x2E9D242CU);
    EXPECT_EQ(fold_sweep(positive, [](float x) { return InvSqrt(x); }), 0x33186A45U);
    EXPECT_EQ(fold_sweep(positive, [](float x) { return fastsqrt(x); }), 0x64E47612U);
    EXPECT_EQ(fastsqrt(4.0F), 2.0F);
    EXPECT_EQ(fastsqrt(2.0F), 1.5F);
    EXPECT_NEAR(InvSqrt(4.0F), 0.4992F, 0.0001F);
    EXPECT_EQ(sine_x(1.5707964F), 1.0F);
    EXPECT_EQ(sine_x(-1.5707964F), -1.0F);
    EXPECT_EQ(sine_x(3.1415927F * 0.75F), 0.75F);
    EXPECT_NEAR(cosine_x(0.0F), 1.0F, 1e-6F);
    EXPECT_NEAR(cosine_x(3.1415927F), -1.0F, 1e-6F);
    // A whole negative turn steps one further down than floor would.
    EXPECT_NEAR(cosine_x(-4.712389F), 0.0F, 0.001F);
}

TEST(Scalar, InterpolationsRoundAfterEachOperation) {
    EXPECT_EQ(fold_sweep(unit, [](float mu) { return CubicInterpolate(0.1F, -3.7F, 255.3F, 17.9F, mu); }), 0x04062B6EU);
    EXPECT_EQ(fold_sweep(unit, [](float mu) { return CatmulInterpolate(0.1F, -3.7F, 255.3F, 17.9F, mu); }),
              0x7D0E0680U);
    EXPECT_EQ(fold_sweep(around_zero, [](float x) { return smoothstep(-100.3F, 300.7F, x); }), 0xF4E210A7U);
    EXPECT_EQ(fold_sweep(unit, [](float t) { return LinearInterpolate(0.1F, 255.3F, t); }), 0x350D100EU);
    for (const auto interpolate : {CubicInterpolate, CatmulInterpolate}) {
        EXPECT_EQ(interpolate(9, 1, 2, -7, 0.0F), 1.0F);
        EXPECT_EQ(interpolate(9, 1, 2, -7, 1.0F), 2.0F);
    }
}

TEST(Scalar, SmoothstepTestsItsEdgesInOrder) {
    EXPECT_EQ(smoothstep(0, 1, 0.5F), 0.5F);
    EXPECT_EQ(smoothstep(0, 1, 1), 1.0F);
    EXPECT_EQ(smoothstep(0, 1, -0.1F), 0.0F);
    EXPECT_EQ(smoothstep(3, 3, 3), 1.0F);
    EXPECT_EQ(smoothstep(5, 2, 3), 0.0F);
    EXPECT_TRUE(std::isnan(smoothstep(0, 1, nan)));
}

TEST(Scalar, RootsAndRuntimeFunctions) {
    EXPECT_EQ(ArcInterpolate(0.6F), std::sqrt(1.0F - 0.6F * 0.6F));
    EXPECT_TRUE(std::isnan(ArcInterpolate(1.5F)));
    EXPECT_EQ(fast_acos(1.0F), 0.0F);
    EXPECT_EQ(fast_acos(-1.0F), 3.14159265F);
    EXPECT_EQ(arctan2(1.0, -1.0), 2.3561944901923448);
    EXPECT_EQ(arctan2(-0.0, -1.0), -3.1415926535897931);
}

TEST(Scalar, WholeNumbersAboveAndBelow) {
    struct Case {
        float x, floor;
        double ceil;
    };
    const Case cases[] = {{-0.5F, -1, 0},
                          {2, 2, 2},
                          {2.5F, 2, 3},
                          {-2.5F, -3, -2},
                          {8388609, 8388609, 8388609},
                          {-3e9F, -3e9F, -3e9F},
                          {1e30F, 1e30F, 1e30F},
                          {-infinity, -infinity, -infinity}};
    for (const Case &c : cases) {
        EXPECT_EQ(xfloor(c.x), c.floor);
        EXPECT_EQ(xceil(c.x), c.ceil);
    }
    EXPECT_TRUE(std::isnan(xfloor(nan)));
    EXPECT_TRUE(std::signbit(xceil(-0.5F)));
}

TEST(Scalar, ClampTestsLowFirst) {
    EXPECT_EQ(Clamp(5, 10, 0), 10);
    EXPECT_EQ(Clamp(10, 10, 0), 0);
    EXPECT_EQ(Clamp(-3, 0, 255), 0);
    EXPECT_EQ(Clamp(300, 0, 255), 255);
    EXPECT_EQ(Clamp(77, 0, 255), 77);
}

TEST(Scalar, RemaindersOfNegativeNumbers) {
    EXPECT_EQ(modulo(-1, 5), -1);
    EXPECT_EQ(modulo(7, -5), 2);
    EXPECT_EQ(NewMod(-1, 5), 4);
    EXPECT_EQ(NewMod(-5, 5), 0);
    EXPECT_EQ(NewMod(-6, 5), 4);
    EXPECT_EQ(NewMod(12, 5), 2);
    EXPECT_EQ(NewMod(-7, -5), 0);
    EXPECT_EQ(NewMod(std::numeric_limits<int32_t>::min(), 10), 2);
    // The fold goes through single precision.
    EXPECT_EQ(NewMod(-1, 16777218), 16777216);
    EXPECT_EQ(NewMod(-1, std::numeric_limits<int32_t>::max()), std::numeric_limits<int32_t>::min());
}

TEST(Scalar, EasingCurves) {
    constexpr std::array<float, 8> times = {0.0F, 0.2F, 0.4375F, 0.47F, 0.5F, 0.53F, 0.8F, 1.0F};
    // The bits of curves 1 to 30 at these times.
    constexpr uint32_t expected[30][8] = {
        {0x00000000, 0x3E9E377A, 0x3F226799, 0x3F2C4A8C, 0x3F3504F3, 0x3F3D5876, 0x3F737871, 0x3F800000},
        {0x25C00000, 0x3D4878F9, 0x3E686FF3, 0x3E854F13, 0x3E95F61A, 0x3EA76AE7, 0x3F30E444, 0x3F800000},
        {0x25400000, 0x3DC3910E, 0x3ECE0E90, 0x3EE7E884, 0x3F000000, 0x3F0C0BBD, 0x3F678DDF, 0x3F800000},
        {0x00000000, 0x3D23D70B, 0x3E440000, 0x3E62339C, 0x3E800000, 0x3E8FD21F, 0x3F23D70B, 0x3F800000},
        {0x00000000, 0x3EB851EC, 0x3F2F0000, 0x3F3816F0, 0x3F400000, 0x3F477319, 0x3F75C28F, 0x3F800000},
        {0x00000000, 0x3DA3D70B, 0x3EC40000, 0x3EE2339C, 0x3F000000, 0x3F0EE631, 0x3F6B851F, 0x3F800000},
        {0x00000000, 0x3C03126F, 0x3DAB8000, 0x3DD4A127, 0x3E000000, 0x3E187335, 0x3F03126F, 0x3F800000},
        {0x00000000, 0x3EF9DB23, 0x3F527000, 0x3F59E332, 0x3F600000, 0x3F656BDB, 0x3F7DF3B6, 0x3F800000},
        {0x00000000, 0x3D03126F, 0x3EAB8000, 0x3ED4A127, 0x3F000000, 0x3F15AF6B, 0x3F77CED9, 0x3F800000},
        {0x00000000, 0x3AD1B718, 0x3D161000, 0x3D47DF2A, 0x3D800000, 0x3DA198D6, 0x3ED1B718, 0x3F800000},
        {0x00000000, 0x3F172474, 0x3F665F00, 0x3F6BCCE5, 0x3F700000, 0x3F73820D, 0x3F7F9724, 0x3F800000},
        {0x00000000, 0x3C51B718, 0x3E961000, 0x3EC7DF2A, 0x3F000000, 0x3F1C1069, 0x3F7CB924, 0x3F800000},
        {0x00000000, 0x39A7C5AD, 0x3C834E00, 0x3CBBE122, 0x3D000000, 0x3D2B4AF7, 0x3EA7C5AD, 0x3F800000},
        {0x00000000, 0x3F2C1D2A, 0x3F719570, 0x3F754B50, 0x3F780000, 0x3F7A20F7, 0x3F7FEB07, 0x3F800000},
        {0x00000000, 0x3BA7C5AD, 0x3E834E00, 0x3EBBE122, 0x3F000000, 0x3F220F6D, 0x3F7EB075, 0x3F800000},
        {0x00000000, 0x3C028586, 0x3D25AA9E, 0x3D498DDB, 0x3D70F0F1, 0x3D8FBA7D, 0x3EA78D31, 0x3F800000},
        {0x00000000, 0x3F2B8D2F, 0x3F695F62, 0x3F6D1AA7, 0x3F700000, 0x3F7273BB, 0x3F7CF7F4, 0x3F7F0000},
        {0x00000000, 0x3C838C19, 0x3E7EFEFF, 0x3EB7431B, 0x3F000000, 0x3F243A12, 0x3F7B67BC, 0x3F7F8000},
        {0x00000000, 0x3DD8368F, 0x3E800000, 0x3E8B4225, 0x3E95F61A, 0x3EA0FD90, 0x3F0D8369, 0x3F800000},
        {0x00000000, 0x3EE4F92E, 0x3F2953FD, 0x3F2F8138, 0x3F3504F3, 0x3F3A5EED, 0x3F64F92E, 0x3F800000},
        {0x00000000, 0x3DE6D022, 0x3EA57D86, 0x3EC14B06, 0x3F000000, 0x3F1F5A7C, 0x3F6325FC, 0x3F800000},
        {0x80000000, 0xBD3E42F2, 0xBDCBB2CA, 0xBDC35D58, 0xBDB39ABF, 0xBD9B2DAD, 0x3E96A118, 0x3F800000},
        {0x25800000, 0x3F34AF75, 0x3F875E5E, 0x3F89B2DB, 0x3F8B39AC, 0x3F8C35D5, 0x3F85F218, 0x3F800000},
        {0x80000000, 0xBDB43958, 0x3E5C8000, 0x3EB2B303, 0x3F000000, 0x3F26A67C, 0x3F8B4395, 0x3F800000},
        {0x00000000, 0x3A019C72, 0xBB6B56D3, 0x3C8D4C9C, 0x3D3504F3, 0x3D972A3A, 0xBEC77375, 0x3F800000},
        {0x00000000, 0x3FB1DCDD, 0x3F667E98, 0x3F6D1AB8, 0x3F74AFB1, 0x3F7B959B, 0x3F7FDF99, 0x3F800000},
        {0x00000000, 0xBBF688F5, 0xBD6A34B8, 0x3E6547C4, 0x3F000000, 0x3F46AE0B, 0x3F80F689, 0x3F800000},
        {0x00000000, 0x3CEDE7AF, 0x3DC473D3, 0x3DCAEDD7, 0x3DB504F3, 0x3D7F2E51, 0x3E82FE8E, 0x3F800000},
        {0x00000000, 0x3F3E80B8, 0x3F7BEEB2, 0x3F700D1B, 0x3F695F62, 0x3F66A245, 0x3F7890C2, 0x3F800000},
        {0x00000000, 0x3DB88420, 0x3D8D42AF, 0x3EAB4785, 0x3F000000, 0x3F2A5C3A, 0x3F68EF7C, 0x3F800000},
    };
    for (int32_t curve = 1; curve <= 30; ++curve) {
        for (std::size_t i = 0; i < times.size(); ++i) {
            const auto value = std::bit_cast<float>(expected[curve - 1][i]);
            // Where a curve passes through 0 only the runtime's own last bit remains.
            if (std::fabs(value) < 1e-12F)
                EXPECT_NEAR(xEase(times[i], curve), 0.0F, 1e-12F) << curve << ' ' << times[i];
            else
                EXPECT_EQ(xEase(times[i], curve), value) << curve << ' ' << times[i];
        }
    }
    for (const int32_t curve : {0, 31, -1, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()})
        EXPECT_EQ(xEase(0.3F, curve), 0.3F);
}

} // namespace
