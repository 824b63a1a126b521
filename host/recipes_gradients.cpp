#include <algorithm>
#include <vector>

#include "host/colour_ramp.h"
#include "host/run.h"
#include "tavik/generators/generators.h"

namespace gallery {
namespace {

// White leaves what is below, black hides it.
std::vector<uint8_t> multiplying_blend_table() {
    std::vector<uint8_t> table(65536);
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<uint8_t>((i / 256) * (i % 256) / 255);
    return table;
}

const std::vector<Stop> rainbow = {{0.0F, {228, 52, 60}}, {0.17F, {245, 158, 45}}, {0.34F, {246, 226, 76}},
                                   {0.5F, {70, 178, 92}}, {0.67F, {52, 148, 220}}, {0.84F, {120, 84, 200}},
                                   {1.0F, {228, 52, 60}}};

void linear_gradient(Run &run) {
    const auto tables = byte_tables({{0, {255, 176, 64}, 255}, {0.6F, {255, 96, 120}, 200}, {1, {60, 40, 140}, 40}});
    const auto blend = multiplying_blend_table();
    run.label("tables", tables);
    run.label("blend table", blend);
    const auto [red, green, blue] = run.channels();
    // The whole gradient from the upper left corner to the lower right one, against the sign of the steps.
    const float steps = static_cast<float>(run.photo.width + run.photo.height);
    run.call(EXPORT(fastLinearGradient), -255 / steps, -255 / steps, 0.0F, run.photo.x_max(), run.photo.height, 1, 1,
             red.photo, green.photo, blue.photo, red.picture, green.picture, blue.picture, tables[0].data(),
             tables[1].data(), tables[2].data(), tables[3].data(), blend.data(), 0);
}

void circular_gradient(Run &run) {
    const auto tables = byte_tables({{0, {255, 255, 255}, 0}, {0.45F, {40, 20, 50}, 0}, {1, {16, 8, 28}, 240}});
    const auto blend = multiplying_blend_table();
    run.label("tables", tables);
    run.label("blend table", blend);
    const auto [red, green, blue] = run.channels();
    run.call(EXPORT(fastCircularGradient), run.photo.x_max(), run.photo.height, run.photo.width / 2,
             run.photo.height / 2, run.photo.width * 3 / 5, 0, red.photo, green.photo, blue.photo, red.picture,
             green.picture, blue.picture, tables[0].data(), tables[1].data(), tables[2].data(), tables[3].data(),
             blend.data());
}

void render_linear(Run &run) {
    auto stops = rainbow;
    for (Stop &stop : stops) stop.alpha = static_cast<uint8_t>(40 + 180 * stop.position);
    constexpr int32_t n = 6;
    const auto table = float_table(stops, n);
    run.label("table", table);
    const auto [red, green, blue] = run.channels();
    run.call(EXPORT(xRenderLinearTo), static_cast<float>(n) / static_cast<float>(run.photo.width), 0.0F, 0.0F,
             run.photo.width, run.photo.height, n, table.data(), red.picture, green.picture, blue.picture, red.photo,
             green.photo, blue.photo);
}

void render_circular(Run &run) {
    // A rainbow in the outer part of the radius.
    std::vector<Stop> stops = {{0, {255, 255, 255}, 90}, {0.65F, {255, 255, 255}, 0}};
    for (std::size_t i = rainbow.size() - 1; i-- > 0;)
        stops.push_back({0.97F - 0.3F * rainbow[i].position, rainbow[i].colour, 120});
    std::sort(stops.begin(), stops.end(), [](const Stop &a, const Stop &b) { return a.position < b.position; });
    stops.push_back({1, {228, 52, 60}, 0});
    const int32_t n = run.photo.width / 2;
    const auto table = float_table(stops, n);
    run.label("table", table);
    const auto [red, green, blue] = run.channels();
    run.call(EXPORT(xRenderCircularTo), static_cast<float>(run.photo.width) * 0.5F,
             static_cast<float>(run.photo.height) * 0.95F, 0, 0, run.photo.width, run.photo.height, n, table.data(),
             red.picture, green.picture, blue.picture, red.photo, green.photo, blue.photo);
}

void render_sweep(Run &run) {
    auto stops = rainbow;
    for (Stop &stop : stops) stop.alpha = 150;
    constexpr int32_t n = 100;
    const auto table = float_table(stops, n);
    run.label("table", table);
    const auto [red, green, blue] = run.channels();
    const float cx = static_cast<float>(run.photo.width) * 0.5F;
    const float cy = static_cast<float>(run.photo.height) * 0.5F;
    run.call(EXPORT(xRenderSweepTo), cx, cy, cx, cy - n, 1.0F, run.photo.width, run.photo.height, n, table.data(),
             red.picture, green.picture, blue.picture, red.photo, green.photo, blue.photo);
}

void gradient_map(Run &run) {
    const auto tables =
        byte_tables({{0, {24, 12, 58}}, {0.4F, {150, 40, 96}}, {0.75F, {244, 150, 70}}, {1, {255, 246, 200}}});
    run.label("tables", tables);
    const auto planes = run.picture.planes();
    run.call(EXPORT(ApplyGradient), run.picture.width, 0, run.picture.height, planes[0], planes[1], planes[2],
             tables[0].data(), tables[1].data(), tables[2].data());
}

} // namespace

Family gradients_family() {
    return {
        "gradients",
        "Colour gradients over the photo, and its brightness as a gradient's position.",
        {
            {"linear_gradient",
             "Linear gradient",
             "From corner to corner, multiplied with the photo by a blend table and fading out.",
             {"fastLinearGradient"},
             linear_gradient},
            {"circular_gradient",
             "Circular gradient",
             "A vignette: nothing in the middle, almost black at the rim.",
             {"fastCircularGradient"},
             circular_gradient},
            {"render_linear",
             "Linear gradient in floats",
             "Seven colours across the photo, interpolated, each with its alpha.",
             {"xRenderLinearTo"},
             render_linear},
            {"render_circular",
             "Circular gradient in floats",
             "A rainbow around a point, and a haze within.",
             {"xRenderCircularTo"},
             render_circular},
            {"render_sweep",
             "Sweep gradient",
             "The colours once around the middle, over the photo.",
             {"xRenderSweepTo"},
             render_sweep},
            {"gradient_map",
             "Gradient map",
             "Each brightness becomes a colour, from violet to cream.",
             {"ApplyGradient"},
             gradient_map},
        },
    };
}

} // namespace gallery
