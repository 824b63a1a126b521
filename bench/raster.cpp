#include "tavik/raster/raster.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

// A target that every triangle is in front of.
tavik_triangle target_on(const Picture &p) {
    std::fill_n(p.to_floats, p.count(), 1e9F);
    tavik_triangle t = {};
    t.x_limit = p.x_max();
    t.y_limit = p.height;
    t.plane_r = p.to_r;
    t.plane_g = p.to_g;
    t.plane_b = p.to_b;
    t.depth = p.to_floats;
    return t;
}

// Calls draw(triangle) for right triangles of that leg, as many as have the pixels of the picture.
template <class Draw> void draw_triangles(const Picture &p, int32_t leg, const Draw &draw) {
    tavik_triangle t = target_on(p);
    const int32_t pixels = (leg + 1) * (leg + 2) / 2;
    const int32_t reach_x = std::max(p.width - leg - 1, 1);
    const int32_t reach_y = std::max(p.height - leg, 1);
    for (int32_t i = 0; i < p.count() / pixels; ++i) {
        t.x0 = t.x2 = i * 7 % reach_x;
        t.x1 = t.x0 + leg;
        t.y0 = t.y1 = i * 5 % reach_y;
        t.y2 = t.y0 + leg;
        t.z0 = t.z1 = t.z2 = static_cast<float>(-i);
        t.r0 = t.g1 = t.b2 = 200;
        t.r1 = t.r2 = t.g0 = t.g2 = t.b0 = t.b1 = 10;
        draw(t);
    }
}

template <int32_t leg> void depth_triangles(const Picture &p) {
    draw_triangles(p, leg, [](tavik_triangle &t) { zTriangle(&t); });
}

template <int32_t leg> void colour_triangles(const Picture &p) {
    draw_triangles(p, leg, [](tavik_triangle &t) { TriangleColor(&t); });
}

template <int32_t smooth> void textured_square(const Picture &p) {
    const tavik_triangle target = target_on(p);
    const auto right = static_cast<float>(p.width);
    const auto bottom = static_cast<float>(p.height);
    tavik_textured_triangle t = {0,        0,      1,      0,   0,   right,  0,       2,        right,
                                 0,        0,      bottom, 2,   0,   bottom, p.width, p.height, p.width,
                                 p.height, smooth, p.r,    p.g, p.b, p.to_r, p.to_g,  p.to_b,   target.depth};
    xTriangle_Perspective(&t);
    t.x0 = t.u0 = right;
    t.y0 = t.v0 = bottom;
    xTriangle_Perspective(&t);
}

const float tilt[16] = {0.01F, 0, 0, 0, 0, -0.008F, 0.004F, 0.0002F, 0, 0.001F, 0.004F, 0, 0, 0, 0, 1};

std::vector<tavik_mesh_vertex> mesh_on(const Picture &p, int32_t side) {
    std::vector<tavik_mesh_vertex> grid(static_cast<std::size_t>(side * side));
    Transform3DHelper(side, side, p.floats, 0.02F, p.r, p.g, p.b, tilt, p.width, p.height, grid.data());
    return grid;
}

constexpr int32_t mesh_side = 200;

const Case cases[] = {
    {"zTriangle, 10 pixels", {.bytes = 7}, depth_triangles<3>},
    {"zTriangle, 105 pixels", {.bytes = 7}, depth_triangles<13>},
    {"zTriangle, 10,011 pixels", {.bytes = 7}, depth_triangles<140>},
    {"TriangleColor, 105 pixels", {.bytes = 3}, colour_triangles<13>},
    {"TriangleColor, 10,011 pixels", {.bytes = 3}, colour_triangles<140>},
    {"xTriangle_Perspective, nearest", {.bytes = 14, .note = "a gather per pixel"}, textured_square<0>},
    {"xTriangle_Perspective, smooth", {.bytes = 14, .note = "a gather per pixel"}, textured_square<1>},
    {"Transform3DHelper",
     {.bytes = 19, .parallel = true, .note = "records of mixed fields"},
     [](const Picture &p) {
         static std::vector<tavik_mesh_vertex> grid;
         grid.resize(static_cast<std::size_t>(p.count()));
         Transform3DHelper(p.width, p.height, p.floats, 0.02F, p.r, p.g, p.b, tilt, p.width, p.height, grid.data());
     }},
    {"Render3DHelper2",
     {.bytes = 14, .parallel = true, .note = "40,000 vertices, whatever the picture's size"},
     [](const Picture &p) {
         const std::vector<tavik_mesh_vertex> grid = mesh_on(p, mesh_side);
         const tavik_triangle target = target_on(p);
         Render3DHelper2(&target, grid.data(), mesh_side, mesh_side, mesh_side, 8);
     }},
};

const Family raster("raster", cases);

} // namespace
} // namespace tavik_bench
