#include <array>
#include <cstddef>

#include "tavik/raster/raster.h"

namespace {

struct Vertex {
    float x, y, z, u, v;
};

// At most one more than the triangle had.
struct Polygon {
    std::array<Vertex, 4> vertices;
    std::size_t count = 0;

    void add(const Vertex &vertex) { vertices[count++] = vertex; }
};

// Always from behind to in front, so that two triangles that share an edge cut it at the same bits.
Vertex cut(const Vertex &behind, const Vertex &front, float nearest) {
    const float s = (nearest - behind.z) / (front.z - behind.z);
    const auto between = [s](float p, float q) { return (q - p) * s + p; };
    return {between(behind.x, front.x), between(behind.y, front.y), nearest, between(behind.u, front.u),
            between(behind.v, front.v)};
}

Polygon clip(const std::array<Vertex, 3> &triangle, float nearest) {
    Polygon polygon;
    for (std::size_t i = 0; i < triangle.size(); ++i) {
        const Vertex &from = triangle[i];
        const Vertex &to = triangle[(i + 1) % triangle.size()];
        const bool from_in = from.z >= nearest;
        const bool to_in = to.z >= nearest;
        if (from_in) polygon.add(from);
        if (from_in && !to_in) polygon.add(cut(to, from, nearest));
        if (!from_in && to_in) polygon.add(cut(from, to, nearest));
    }
    return polygon;
}

} // namespace

TAVIK_EXPORT(void) xTriangle_Clipped(const tavik_clipped_triangle *record) {
    const tavik_clipped_triangle &t = *record;
    Polygon polygon = clip(
        {{{t.x0, t.y0, t.z0, t.u0, t.v0}, {t.x1, t.y1, t.z1, t.u1, t.v1}, {t.x2, t.y2, t.z2, t.u2, t.v2}}}, t.nearest);
    for (std::size_t i = 0; i < polygon.count; ++i) {
        Vertex &vertex = polygon.vertices[i];
        const float scale = t.focal / vertex.z;
        vertex.x = vertex.x * scale + t.centre_x;
        vertex.y = vertex.y * scale + t.centre_y;
    }
    const Vertex &a = polygon.vertices[0];
    for (std::size_t i = 2; i < polygon.count; ++i) {
        const Vertex &b = polygon.vertices[i - 1];
        const Vertex &c = polygon.vertices[i];
        const tavik_textured_triangle projected = {a.x,
                                                   a.y,
                                                   a.z,
                                                   a.u,
                                                   a.v,
                                                   b.x,
                                                   b.y,
                                                   b.z,
                                                   b.u,
                                                   b.v,
                                                   c.x,
                                                   c.y,
                                                   c.z,
                                                   c.u,
                                                   c.v,
                                                   t.texture_width,
                                                   t.texture_height,
                                                   t.width,
                                                   t.height,
                                                   t.smooth,
                                                   t.texture_r,
                                                   t.texture_g,
                                                   t.texture_b,
                                                   t.plane_r,
                                                   t.plane_g,
                                                   t.plane_b,
                                                   t.depth};
        xTriangle_Perspective(&projected);
    }
}
