#include "tavik/scalar/scalar.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace {

double squared(double x) { return x * x; }
double cubed(double x) { return x * x * x; }
double fourth(double x) { return squared(squared(x)); }
double fifth(double x) { return fourth(x) * x; }
double two_to(double x) { return std::pow(2.0, x); }

// Turns of the elastic and bouncing curves, multiplied out of a π of 3.1415926545.
constexpr double elastic = 14.137166945250002;
constexpr double elastic_both = 28.274333890500003;
constexpr double bounce = 10.99557429075;
constexpr double bounce_both = 21.9911485815;

constexpr double per_255 = 0.00392156862745098;
constexpr double per_510 = 0.00196078431372549;

using Curve = double (*)(double t, double u);

// By number, in families of three: first, second, both ends. u is t − 1.
constexpr std::array<Curve, 30> curves = {
    // Sine.
    [](double t, double) { return std::sin(1.5707963 * t); },
    [](double, double u) { return std::sin(1.5707963 * u) + 1; },
    [](double t, double) { return (std::sin(3.1415926 * (t - 0.5)) + 1) * 0.5; },
    // Quadratic.
    [](double t, double) { return t * t; },
    [](double t, double) { return (2 - t) * t; },
    [](double t, double) { return t < 0.5 ? 2 * t * t : (4 - 2 * t) * t - 1; },
    // Cubic.
    [](double t, double) { return cubed(t); },
    [](double, double u) { return cubed(u) + 1; },
    [](double t, double u) { return t < 0.5 ? 4 * cubed(t) : u * squared(2 * t - 2) + 1; },
    // Quartic.
    [](double t, double) { return fourth(t); },
    [](double, double u) { return 1 - fourth(u); },
    [](double t, double u) { return t < 0.5 ? 8 * fourth(t) : 1 - 8 * fourth(u); },
    // Quintic.
    [](double t, double) { return fifth(t); },
    [](double, double u) { return fifth(u) + 1; },
    [](double t, double u) { return t < 0.5 ? 16 * fifth(t) : 16 * fifth(u) + 1; },
    // Exponential.
    [](double t, double) { return (two_to(8 * t) - 1) * per_255; },
    [](double t, double) { return 1 - two_to(-8 * t); },
    [](double t, double) { return t < 0.5 ? (two_to(16 * t) - 1) * per_510 : 1 - 0.5 * two_to(-16 * (t - 0.5)); },
    // Circular.
    [](double t, double) { return 1 - std::sqrt(1 - t); },
    [](double t, double) { return std::sqrt(t); },
    [](double t, double) { return t < 0.5 ? (1 - std::sqrt(1 - 2 * t)) * 0.5 : (std::sqrt(2 * t - 1) + 1) * 0.5; },
    // Overshooting.
    [](double t, double) { return (2.70158 * t - 1.70158) * t * t; },
    [](double, double u) { return (2.70158 * u + 1.70158) * u * u + 1; },
    [](double t, double u) { return t < 0.5 ? 2 * t * t * (7 * t - 2.5) : 2 * u * u * (7 * u + 2.5) + 1; },
    // Elastic.
    [](double t, double) { return std::sin(elastic * t) * fourth(t); },
    [](double t, double u) { return 1 - std::cos(elastic * t) * fourth(u); },
    [](double t, double u) {
        if (t < 0.45) return 8 * fourth(t) * std::sin(elastic_both * t);
        if (t < 0.55) return 0.5 + 0.75 * std::sin(12.566370618 * t);
        return 1 - 8 * fourth(u) * std::sin(elastic_both * t);
    },
    // Bouncing.
    [](double t, double u) { return std::fabs(std::sin(bounce * t)) * two_to(6 * u); },
    [](double t, double) { return 1 - std::fabs(std::cos(bounce * t)) * two_to(-6 * t); },
    [](double t, double u) {
        const double s = std::fabs(std::sin(bounce_both * t));
        return t < 0.5 ? 8 * s * two_to(8 * u) : 1 - 8 * s * two_to(-8 * t);
    },
};

} // namespace

TAVIK_EXPORT(float) xEase(float t, int32_t curve) {
    // Number 0 and below wrap to indices past the end.
    const std::size_t index = static_cast<std::size_t>(curve) - 1;
    if (index >= curves.size()) return t;
    return static_cast<float>(curves[index](t, double{t} - 1));
}
