#include <algorithm>
#include <array>
#include <vector>

#include "host/colour_ramp.h"
#include "host/drawing.h"
#include "host/run.h"
#include "host/space.h"
#include "tavik/generators/generators.h"
#include "tavik/lighting/lighting.h"

namespace gallery {
namespace {

constexpr int32_t side = 320;
constexpr float tallest = 90;

using Heights = std::vector<float>;

const std::vector<Stop> rock = {{0.0F, {70, 96, 58}},
                                {0.4F, {122, 120, 78}},
                                {0.65F, {128, 108, 92}},
                                {0.85F, {168, 160, 154}},
                                {1.0F, {250, 250, 252}}};

Heights mountains(Run &run) {
    Heights heights;
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x)
            heights.push_back(run.call(EXPORT(FastPerlinNoise_2D), 9 + static_cast<float>(x) * 0.012F,
                                       4 + static_cast<float>(y) * 0.012F, 6));
    run.label("heights", heights);
    float lowest = 0;
    float highest = 0;
    run.call(EXPORT(xFindMinMax_f), side, side, heights.data(), &lowest, &highest);
    for (float &height : heights) height = (height - lowest) / (highest - lowest) * tallest;
    return heights;
}

// Colours by height, shaded from the upper left; sediment lies where the mask says.
Image map_of(Run &run, const Heights &heights, const std::vector<uint8_t> &sediment) {
    const auto tables = byte_tables(rock);
    std::array<Heights, 3> colours;
    constexpr std::array<float, 3> sand = {206, 186, 140};
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const auto entry = static_cast<std::size_t>(std::clamp(heights[i] / tallest * 255, 0.0F, 255.0F));
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const auto bare = static_cast<float>(tables[channel][entry]);
            colours[channel].push_back(bare + (sand[channel] - bare) * static_cast<float>(sediment[i]) / 255);
        }
    }
    run.label("colours", colours[0]);
    auto lit = colours;
    run.call(EXPORT(CPU_hightmap_r3_float), side, side, 0.7F, -1.0F, -1.0F, 1.1F, 0.35F, 0.0F, 1.0F, heights.data(),
             colours[0].data(), colours[1].data(), colours[2].data(), lit[0].data(), lit[1].data(), lit[2].data());
    Image map(side, side);
    const auto planes = map.planes();
    for (std::size_t channel = 0; channel < 3; ++channel)
        for (std::size_t i = 0; i < heights.size(); ++i)
            planes[channel][i] = static_cast<uint8_t>(std::clamp(lit[channel][i] * 1.15F, 0.0F, 255.0F));
    return map;
}

Image in_space(Run &run, const Heights &heights, const Image &map) {
    constexpr Colour sky = {176, 200, 226};
    Image picture(2 * side, side, sky);
    Canvas canvas(picture);
    const Matrix view = view_from({0.86F, 0.51F, 0.86F, 0.51F, 520, 1.8F, 2});
    run.label("view", view);
    std::vector<tavik_mesh_vertex> grid(heights.size());
    run.label("grid", grid);
    run.call(EXPORT(Transform3DHelper), side, side, heights.data(), 0.9F, map.red.data(), map.green.data(),
             map.blue.data(), view.data(), picture.width, picture.height, grid.data());
    const tavik_triangle target = canvas.triangle();
    run.call(EXPORT(Render3DHelper2), &target, grid.data(), side, side, side, 8);
    return picture;
}

void eroded_mountains(Run &run) {
    const Heights before = mountains(run);
    Heights heights = before;
    constexpr std::array<float, 8> settings = {0.05F, 2, 0.01F, 0.1F, 0.1F, 0.02F, 4, 3};
    run.label("settings", settings);
    run.call(EXPORT(xDoErode), side, side, heights.data(), 160, 4000, 70, 6, 1, settings.data());
    // A last shower over the middle.
    run.call(EXPORT(xErodeBlock), side, side, heights.data(), 120, 120, 200, 200, 60, 1500, 50, 2, settings.data());
    Heights flow(heights.size());
    Heights next(heights.size());
    for (int pass = 0; pass < 4; ++pass) {
        run.call(EXPORT(xDifferenceKernel), side, side, 1.4F, 0.8F, heights.data(), flow.data());
        run.call(EXPORT(xApplySlope), side, side, 1.4F, heights.data(), flow.data(), next.data());
        heights.swap(next);
    }
    std::vector<uint8_t> sediment(heights.size());
    run.call(EXPORT(erosionsubtracter), side, side, -60.0F, before.data(), heights.data(), sediment.data());
    Image &picture = run.draw_on(2 * side, 2 * side, {0, 0, 0});
    const Image after = map_of(run, heights, sediment);
    paste(picture, map_of(run, before, std::vector<uint8_t>(before.size())), 0, 0);
    paste(picture, after, side, 0);
    paste(picture, in_space(run, heights, after), 0, side);
}

// Boxes of random places and heights.
std::vector<uint8_t> city() {
    std::vector<uint8_t> heights(static_cast<std::size_t>(side * side), 10);
    uint32_t state = 3;
    const auto draw = [&state](int32_t below) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int32_t>((state >> 16) % static_cast<uint32_t>(below));
    };
    for (int32_t i = 0; i < 70; ++i) {
        const int32_t left = draw(side - 50);
        const int32_t top = draw(side - 50);
        const int32_t width = 10 + draw(36);
        const int32_t height = 10 + draw(36);
        const auto tall = static_cast<uint8_t>(14 + draw(46));
        for (int32_t y = top; y < top + height; ++y) std::fill_n(heights.begin() + y * side + left, width, tall);
    }
    return heights;
}

void paper_city(Run &run) {
    const std::vector<uint8_t> bytes = city();
    const Heights heights(bytes.begin(), bytes.end());
    run.label("heights", heights);
    Image &picture = run.draw_on(side, side, {0, 0, 0});
    for (std::size_t i = 0; i < heights.size(); ++i) {
        picture.red[i] = 246;
        picture.green[i] = 240;
        picture.blue[i] = 228;
    }
    std::vector<uint8_t> shadow(heights.size());
    run.label("shadow", shadow);
    run.call(EXPORT(xDoRaytraceShadow), side, side, heights.data(), 220.0F, 0.8F, 96, 0.3F, shadow.data());
    for (uint8_t *plane : picture.planes())
        for (std::size_t i = 0; i < heights.size(); ++i)
            plane[i] = static_cast<uint8_t>(plane[i] * (120 + shadow[i] * 135 / 255) / 255);
    Heights sum(heights.size());
    run.label("sum", sum);
    for (int32_t i = 0; i < 16; ++i)
        run.call(EXPORT(xOcclusionAdder), side, side, heights.data(), 22.5F * static_cast<float>(i), 32, 16, 1.0F,
                 sum.data());
    run.call(EXPORT(xOcclusionBlender), side, side, sum.data(), 16, 1.2F, picture.red.data(), picture.green.data(),
             picture.blue.data());
}

void open_sky(Run &run) {
    const std::vector<uint8_t> bytes = city();
    const Heights heights(bytes.begin(), bytes.end());
    run.label("heights", heights);
    Image &picture = run.draw_on(2 * side, side, {0, 0, 0});
    Image grey(side, side);
    run.call(EXPORT(xDoOcclusion), side, side, bytes.data(), 12, 24, 24, 0.5F, grey.red.data());
    grey.green = grey.blue = grey.red;
    paste(picture, grey, 0, 0);
    Heights open(heights.size());
    run.call(EXPORT(CPUxDoOcclusion_f), side, side, heights.data(), 12, 80, 20, 0.5F, open.data());
    const auto tables = byte_tables({{0.0F, {40, 20, 60}}, {0.6F, {200, 110, 90}}, {1.0F, {255, 250, 226}}});
    for (std::size_t i = 0; i < open.size(); ++i) {
        const auto entry = static_cast<std::size_t>(std::clamp(open[i] * 255, 0.0F, 255.0F));
        grey.red[i] = tables[0][entry];
        grey.green[i] = tables[1][entry];
        grey.blue[i] = tables[2][entry];
    }
    paste(picture, grey, side, 0);
}

} // namespace

Family terrain_family() {
    return {"terrain",
            "Erosion, occlusion and shadows of height fields.",
            {
                {"eroded_mountains",
                 "Eroded mountains",
                 "Noise as mountains before rain and weathering and after, sediment in sand; below, in space.",
                 {"FastPerlinNoise_2D", "xFindMinMax_f", "xDoErode", "xErodeBlock", "xDifferenceKernel", "xApplySlope",
                  "erosionsubtracter", "CPU_hightmap_r3_float", "Transform3DHelper", "Render3DHelper2"},
                 eroded_mountains},
                {"paper_city",
                 "Paper city",
                 "Boxes under the sun of the upper left, darkened by the horizon in sixteen directions.",
                 {"xDoRaytraceShadow", "xOcclusionAdder", "xOcclusionBlender"},
                 paper_city},
                {"open_sky",
                 "Open sky",
                 "How much of the sky each place sees: near obstacles at the left, far ones too at the right.",
                 {"xDoOcclusion", "CPUxDoOcclusion_f"},
                 open_sky},
            }};
}

} // namespace gallery
