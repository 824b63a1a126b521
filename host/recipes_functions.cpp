#include <cmath>
#include <numbers>

#include "host/chart.h"
#include "host/run.h"
#include "tavik/memops/memops.h"
#include "tavik/scalar/scalar.h"

namespace gallery {
namespace {

using namespace chart;

struct Curve {
    const char *name;
    Colour colour;
    std::vector<Point> points;
};

constexpr Axes whole_chart(float x_first, float x_last, float y_low, float y_high) {
    return {40, 60, 1240, 540, x_first, x_last, y_low, y_high};
}

// Lines at the whole numbers, the curves, and their names above.
void draw_curves(Image &picture, const Axes &axes, std::span<const Curve> curves) {
    const auto highest = static_cast<int32_t>(std::floor(axes.y_high));
    for (auto y = static_cast<int32_t>(std::ceil(axes.y_low)); y <= highest; ++y)
        axes.rule(picture, static_cast<float>(y), grid);
    int32_t left = 40;
    for (const Curve &curve : curves) {
        draw_line(picture, curve.points, 3, curve.colour);
        draw_key(picture, left, 20, curve.name, curve.colour);
        left += 90 + text_width(text_size, curve.name);
    }
}

void roots(Run &run) {
    Image &picture = run.draw_on(1320, 640, paper);
    const Axes axes = whole_chart(0.2F, 6, 0, 2.5F);
    std::array<float, 1> number{};
    run.label("number", number);
    const auto root = axes.points_of([&](float x) {
        number[0] = x;
        run.call(EXPORT(SSE_SQRT_SS), number.data());
        return number[0];
    });
    const auto fast_root = axes.points_of([&](float x) { return run.call(EXPORT(fastsqrt), x); });
    const auto inverse_root = axes.points_of([&](float x) { return run.call(EXPORT(InvSqrt), x); });
    draw_curves(picture, axes,
                std::array<Curve, 3>{
                    {{"SSE_SQRT_SS", ink, root}, {"fastsqrt", red, fast_root}, {"InvSqrt", blue, inverse_root}}});
}

void circles(Run &run) {
    constexpr auto pi = std::numbers::pi_v<float>;
    Image &picture = run.draw_on(1320, 640, paper);
    const Axes axes = whole_chart(-1, 1, -1.8F, 3.3F);
    const auto arc = axes.points_of([&](float x) { return run.call(EXPORT(ArcInterpolate), x); });
    const auto arc_cosine = axes.points_of([&](float x) { return run.call(EXPORT(fast_acos), x); });
    const auto arc_tangent =
        axes.points_of([&](float x) { return static_cast<float>(run.call(EXPORT(arctan2), double{x}, 0.25)); });
    const auto cosine = axes.points_of([&](float x) { return run.call(EXPORT(cosine_x), pi * x); });
    draw_curves(picture, axes,
                std::array<Curve, 4>{{{"ArcInterpolate", ink, arc},
                                      {"fast_acos", red, arc_cosine},
                                      {"arctan2", blue, arc_tangent},
                                      {"cosine_x", green, cosine}}});
}

void steps(Run &run) {
    Image &picture = run.draw_on(1320, 640, paper);
    const Axes axes = whole_chart(-4, 4, -4.2F, 5.2F);
    const auto lower = axes.points_of([&](float x) { return run.call(EXPORT(xfloor), x); });
    const auto upper = axes.points_of([&](float x) { return static_cast<float>(run.call(EXPORT(xceil), x)); });
    const auto smooth = axes.points_of([&](float x) { return 4 * run.call(EXPORT(smoothstep), -2.0F, 2.0F, x); });
    draw_curves(
        picture, axes,
        std::array<Curve, 3>{{{"xfloor", red, lower}, {"xceil", blue, upper}, {"4 x smoothstep", green, smooth}}});
}

// Each whole number is a level stretch of the curve.
void remainders(Run &run) {
    Image &picture = run.draw_on(1320, 640, paper);
    const Axes axes = whole_chart(-12, 13, -4.5F, 5.5F);
    const auto of_whole = [&](auto function) {
        return axes.points_of(
            [&](float x) { return static_cast<float>(function(static_cast<int32_t>(std::floor(x)))); });
    };
    const auto clamped = of_whole([&](int32_t i) { return run.call(EXPORT(Clamp), i, -3, 5); });
    const auto remainder = of_whole([&](int32_t i) { return run.call(EXPORT(modulo), i, 5); });
    const auto folded = of_whole([&](int32_t i) { return run.call(EXPORT(NewMod), i, 5); });
    draw_curves(picture, axes,
                std::array<Curve, 3>{
                    {{"Clamp to -3 .. 5", green, clamped}, {"modulo 5", red, remainder}, {"NewMod 5", blue, folded}}});
}

} // namespace

Family functions_family() {
    return {
        "functions",
        "Roots, parts of circles, steps and remainders, drawn as charts.",
        {
            {"roots",
             "Roots",
             "The root, a quick one from the float's bits, and the inverse root after one Newton step.",
             {"SSE_SQRT_SS", "fastsqrt", "InvSqrt"},
             roots},
            {"circles",
             "Parts of circles",
             "The quarter circles, the arc cosine, an arc tangent, and a cosine of parabolas over one period.",
             {"ArcInterpolate", "fast_acos", "arctan2", "cosine_x"},
             circles},
            {"steps",
             "Steps",
             "Down to the whole number, up to it, and a smooth step.",
             {"xfloor", "xceil", "smoothstep"},
             steps},
            {"remainders",
             "Remainders",
             "Whole numbers clamped, and their remainders: with the sign of the number, and folded upwards.",
             {"Clamp", "modulo", "NewMod"},
             remainders},
        },
    };
}

} // namespace gallery
