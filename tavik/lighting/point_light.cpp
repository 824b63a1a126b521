#include <cmath>

#include "tavik/frame/vector.h"
#include "tavik/lighting/lighting.h"

using namespace tavik;

namespace {

// A negative cosine is the back of the surface.
float held_cosine(float cosine) {
    if (cosine < 0) return 0;
    return cosine < 1.0F ? cosine : 1.0F;
}

// Evaluated in double precision, so that every platform's runtime rounds to the same float.
float power_of(float base, float exponent) {
    return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}

void add_colour(float *out, const float *colour, float share, float intensity, float fall) {
    for (int channel = 0; channel < 3; ++channel) out[channel] = ((colour[channel] * share) * intensity) * fall;
}

} // namespace

TAVIK_EXPORT(float *)
GetPointLight(float *out, const float *light, const float *point, const float *view, const float *normal) {
    const float *diffuse_colour = light + 3;
    const float diffuse_intensity = light[6];
    const float *specular_colour = light + 7;
    const float specular_intensity = light[10];
    const float shininess = light[11];
    if (!(diffuse_intensity > 0)) return out;

    const Vector to_light = load_vector(light) - load_vector(point);
    const float distance = length(to_light);
    const Vector direction = to_light * (1.0F / distance);
    const float fall = 1.0F / (distance * distance);
    const Vector surface = load_vector(normal);
    const Vector half = load_vector(view) + direction;

    const float diffuse = held_cosine(dot(direction, surface));
    const float specular = power_of(held_cosine(dot(half * (1.0F / length(half)), surface)), shininess);
    add_colour(out, diffuse_colour, diffuse, diffuse_intensity, fall);
    add_colour(out + 3, specular_colour, specular, specular_intensity, fall);
    return out;
}
