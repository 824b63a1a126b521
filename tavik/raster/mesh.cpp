#include <algorithm>
#include <array>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/raster/depth_triangle.h"
#include "tavik/raster/raster.h"

using namespace tavik;

namespace {

void set_vertices(tavik_triangle &triangle, const tavik_mesh_vertex &a, const tavik_mesh_vertex &b,
                  const tavik_mesh_vertex &c) {
    triangle.x0 = a.x;
    triangle.y0 = a.y;
    triangle.x1 = b.x;
    triangle.y1 = b.y;
    triangle.x2 = c.x;
    triangle.y2 = c.y;
    triangle.r0 = a.r;
    triangle.g0 = a.g;
    triangle.b0 = a.b;
    triangle.r1 = b.r;
    triangle.g1 = b.g;
    triangle.b1 = b.b;
    triangle.r2 = c.r;
    triangle.g2 = c.g;
    triangle.b2 = c.b;
    triangle.z0 = a.z;
    triangle.z1 = b.z;
    triangle.z2 = c.z;
}

struct Mesh {
    const tavik_mesh_vertex *grid;
    int32_t columns, stride;
};

// Cells of the rows [first_cell, last_cell), on the rows [first_row, last_row) of the screen.
void draw_cells(tavik_triangle &triangle, const Mesh &mesh, int32_t first_cell, int32_t last_cell, int32_t first_row,
                int32_t last_row) {
    for (int32_t j = first_cell; j < last_cell; ++j) {
        const tavik_mesh_vertex *upper =
            mesh.grid + static_cast<std::size_t>(j) * static_cast<std::size_t>(mesh.stride);
        const tavik_mesh_vertex *lower = upper + mesh.stride;
        for (int32_t i = 0; i + 1 < mesh.columns; ++i) {
            const tavik_mesh_vertex &a = upper[i];
            const tavik_mesh_vertex &b = upper[i + 1];
            const tavik_mesh_vertex &c = lower[i + 1];
            const tavik_mesh_vertex &d = lower[i];
            if (a.visible == 0 || b.visible == 0 || c.visible == 0 || d.visible == 0) continue;
            set_vertices(triangle, a, b, c);
            draw_depth_triangle(triangle, first_row, last_row);
            set_vertices(triangle, a, c, d);
            draw_depth_triangle(triangle, first_row, last_row);
        }
    }
}

} // namespace

TAVIK_EXPORT(void)
Render3DHelper(tavik_triangle *record, const tavik_mesh_vertex *grid, int32_t columns, int32_t rows, int32_t stride,
               int32_t band, int32_t bands) {
    if (columns <= 0 || rows <= 0) return;
    const int32_t per_band = (rows - 1) / bands;
    const int32_t first = band * per_band;
    const int32_t last = band == bands - 1 ? rows - 1 : first + per_band;
    draw_cells(*record, {grid, columns, stride}, first, last, 0, record->y_limit);
}

TAVIK_EXPORT(void)
Render3DHelper2(const tavik_triangle *record, const tavik_mesh_vertex *grid, int32_t columns, int32_t rows,
                int32_t stride, int32_t bands) {
    if (columns <= 0 || rows <= 0) return;
    parallel_for(0, bands, 1, [&](int32_t begin, int32_t end) {
        tavik_triangle triangle = *record;
        const auto row_of = [&](int32_t band) { return static_cast<int32_t>(int64_t{record->y_limit} * band / bands); };
        draw_cells(triangle, {grid, columns, stride}, 0, rows - 1, row_of(begin), row_of(end));
    });
}
