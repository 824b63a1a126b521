#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/vector.h"
#include "tavik/raster/raster.h"

using namespace tavik;

namespace {

// From the model to the screen.
class Projection {
  public:
    Projection(const float *matrix, int32_t width, int32_t height)
        : m_(matrix), width_(static_cast<float>(width)), height_(static_cast<float>(height)) {}

    // The place of a vertex, which has its colour; hidden where the screen has none.
    tavik_mesh_vertex place(Vector point, tavik_mesh_vertex vertex) const {
        const float w = row(3, point);
        const float inverse = 1.0F / w;
        const float depth = row(2, point) * inverse;
        const float x = (row(0, point) * inverse * 0.5F + 0.5F) * width_;
        const float y = (0.5F - row(1, point) * inverse * 0.5F) * height_;
        const bool visible = w > 0.0001F && depth >= -1.0F && depth <= 1.0F && on_screen(x) && on_screen(y);
        vertex.x = static_cast<int16_t>(visible ? floor_to_int(x + 0.5F) : 0);
        vertex.y = static_cast<int16_t>(visible ? floor_to_int(y + 0.5F) : 0);
        vertex.z = visible ? depth : 0.0F;
        vertex.visible = visible ? 1 : 0;
        return vertex;
    }

  private:
    float row(int index, Vector p) const {
        return ((m_[index] * p.x + m_[index + 4] * p.y) + m_[index + 8] * p.z) + m_[index + 12];
    }
    static bool on_screen(float position) { return position >= -32768.0F && position < 32767.0F; }

    const float *m_;
    float width_, height_;
};

// A projection costs about this many light elements.
constexpr int32_t vertex_cost = 8;

} // namespace

TAVIK_EXPORT(void)
Transform3DHelper(int32_t columns, int32_t rows, const float *heights, float height_scale, const uint8_t *src_r,
                  const uint8_t *src_g, const uint8_t *src_b, const float *matrix, int32_t width, int32_t height,
                  tavik_mesh_vertex *grid) {
    const Projection projection(matrix, width, height);
    const float middle_x = static_cast<float>(columns - 1) * 0.5F;
    const float middle_y = static_cast<float>(rows - 1) * 0.5F;
    parallel_for(0, rows, row_grain(wrap_mul(columns, vertex_cost)), [&](int32_t begin, int32_t end) {
        for (int32_t j = begin; j < end; ++j) {
            for (int32_t i = 0; i < columns; ++i) {
                const std::size_t at = static_cast<std::size_t>(j) * static_cast<std::size_t>(columns) + i;
                const Vector point = {static_cast<float>(i) - middle_x, static_cast<float>(j) - middle_y,
                                      heights[at] * height_scale};
                grid[at] = projection.place(point, {0, 0, 0, src_r[at], src_g[at], src_b[at], 0});
            }
        }
    });
}

TAVIK_EXPORT(void)
Transform3DHelper_2(int32_t count, const float *points, const uint32_t *colours, const float *matrix, int32_t width,
                    int32_t height, tavik_mesh_vertex *vertices) {
    const Projection projection(matrix, width, height);
    parallel_for(0, count, light_grain / vertex_cost, [&](int32_t begin, int32_t end) {
        for (int32_t i = begin; i < end; ++i) {
            const uint32_t colour = colours[i];
            vertices[i] =
                projection.place(load_vector(points + std::size_t{3} * static_cast<std::size_t>(i)),
                                 {0, 0, 0, low_byte(colour), low_byte(colour >> 8), low_byte(colour >> 16), 0});
        }
    });
}
