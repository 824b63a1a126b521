#include "tavik/scalar/scalar.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

#include "host/chart.h"
#include "host/run.h"

namespace gallery {
namespace {

using namespace chart;

void easing_curves(Run &run) {
    constexpr int32_t columns = 6;
    constexpr int32_t rows = 5;
    constexpr int32_t cell = 220;
    constexpr int32_t margin = 26;
    // Three curves of each shape: at its start, at its end and at both.
    constexpr std::array colours = {red, blue, green};
    Image &picture = run.draw_on(columns * cell, rows * cell, paper);
    for (int32_t i = 0; i < columns * rows; ++i) {
        const int32_t left = i % columns * cell;
        const int32_t top = i / columns * cell;
        const Axes axes = {static_cast<float>(left + margin),
                           static_cast<float>(top + margin),
                           cell - 2 * margin,
                           cell - 2 * margin,
                           0,
                           1,
                           -0.4F,
                           1.4F};
        axes.rule(picture, 0, grid);
        axes.rule(picture, 1, grid);
        const auto curve = axes.points_of([&](float t) { return run.call(EXPORT(xEase), t, i + 1); });
        draw_line(picture, curve, 4, colours[static_cast<std::size_t>(i) % colours.size()]);
        draw_text(picture, left + margin, top + 4, text_size, std::to_string(i + 1), ink);
    }
}

void parabolic_sine(Run &run) {
    constexpr auto pi = std::numbers::pi_v<float>;
    Image &picture = run.draw_on(1320, 640, paper);
    const Axes axes = {40, 60, 1240, 520, -2 * pi, 2 * pi, -1.15F, 1.15F};
    for (const float y : {-1.0F, 0.0F, 1.0F}) axes.rule(picture, y, grid);

    float largest_error = 0;
    draw_line(picture, axes.points_of([](float x) { return std::sin(x); }), 7, {176, 202, 242});
    draw_line(picture, axes.points_of([&](float x) {
        const float sine = run.call(EXPORT(sine_x), x);
        largest_error = std::max(largest_error, std::abs(sine - std::sin(x)));
        return sine;
    }),
              3, red);
    draw_line(picture, axes.points_of([&](float x) { return 10 * (run.call(EXPORT(sine_x), x) - std::sin(x)); }), 2,
              green);

    draw_key(picture, 40, 20, "sine_x", red);
    draw_key(picture, 300, 20, "sine", {176, 202, 242});
    draw_key(picture, 500, 20, "ten times the difference", green);
    std::ostringstream fact;
    fact.precision(3);
    fact << "Largest difference from the true sine: " << largest_error << ".";
    run.note(fact.str());
}

// The sample at this place of the row, the ends repeated.
float sample(std::span<const float> row, int32_t i) {
    return row[static_cast<std::size_t>(std::clamp(i, 0, static_cast<int32_t>(row.size()) - 1))];
}

void interpolation(Run &run) {
    constexpr std::array<float, 11> samples = {0.15F, 0.2F, 0.75F, 0.9F, 0.35F, 0.1F, 0.1F, 0.95F, 0.6F, 0.7F, 0.25F};
    Image &picture = run.draw_on(1320, 640, paper);
    const Axes axes = {40, 60, 1240, 540, 0, samples.size() - 1, -0.1F, 1.15F};
    for (const float y : {0.0F, 0.5F, 1.0F}) axes.rule(picture, y, grid);

    const auto between = [&](auto interpolate) {
        return axes.points_of([&](float x) {
            const auto i = std::min(static_cast<int32_t>(x), static_cast<int32_t>(samples.size()) - 2);
            return interpolate(i, x - static_cast<float>(i));
        });
    };
    const auto linear = between([&](int32_t i, float t) {
        return run.call(EXPORT(LinearInterpolate), sample(samples, i), sample(samples, i + 1), t);
    });
    const auto cubic = between([&](int32_t i, float t) {
        return run.call(EXPORT(CubicInterpolate), sample(samples, i - 1), sample(samples, i), sample(samples, i + 1),
                        sample(samples, i + 2), t);
    });
    const auto catmull_rom = between([&](int32_t i, float t) {
        return run.call(EXPORT(CatmulInterpolate), sample(samples, i - 1), sample(samples, i), sample(samples, i + 1),
                        sample(samples, i + 2), t);
    });
    draw_line(picture, linear, 3, {160, 168, 184});
    draw_line(picture, cubic, 3, red);
    draw_line(picture, catmull_rom, 3, blue);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const Point centre = axes.at(static_cast<float>(i), samples[i]);
        draw_line(picture, std::array{centre, centre}, 14, ink);
    }

    draw_key(picture, 40, 20, "LinearInterpolate", {160, 168, 184});
    draw_key(picture, 420, 20, "CubicInterpolate", red);
    draw_key(picture, 800, 20, "CatmulInterpolate", blue);
}

} // namespace

Family scalar_family() {
    return {
        "scalar",
        "One value per call: easing, interpolation and fast approximations, drawn as charts.",
        {
            {"easing_curves", "Thirty easing curves", "Every easing curve from 0 to 1.", {"xEase"}, easing_curves},
            {"parabolic_sine",
             "A sine of parabolas",
             "The fast sine over two periods, beside the true one.",
             {"sine_x"},
             parabolic_sine},
            {"interpolation",
             "Between the samples",
             "Straight, cubic and Catmull-Rom ways through the same samples.",
             {"LinearInterpolate", "CubicInterpolate", "CatmulInterpolate"},
             interpolation},
        },
    };
}

} // namespace gallery
