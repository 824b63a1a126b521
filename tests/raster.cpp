#include "tavik/raster/raster.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

// Three planes and their depth, of rows one sample wider than what is drawn.
struct Screen {
    int32_t x_limit, y_limit;
    Planes planes;
    Floats depth;

    Screen(int32_t columns, int32_t rows, float far = 100)
        : x_limit(columns),
          y_limit(rows),
          planes(planes_of(static_cast<std::size_t>((columns + 1) * rows), 9)),
          depth(planes[0].size(), far) {}

    // Three corners' places, colours and depths, and where they are drawn.
    tavik_triangle triangle(std::array<int32_t, 6> corners = {}, std::array<int32_t, 9> colours = {},
                            std::array<float, 3> depths = {}) {
        return record<tavik_triangle>(corners, colours, depths, x_limit, y_limit, planes, depth);
    }
    std::vector<int> red(int32_t y) const {
        const auto start = planes[0].begin() + y * (x_limit + 1);
        return {start, start + x_limit + 1};
    }
    bool operator==(const Screen &) const = default;
};

struct Corner {
    int32_t x, y;
    float z = 1;
    int32_t red = 50;
};

tavik_triangle triangle_of(Screen &screen, Corner a, Corner b, Corner c) {
    return screen.triangle({a.x, a.y, b.x, b.y, c.x, c.y}, {a.red, 0, 0, b.red, 0, 0, c.red, 0, 0}, {a.z, b.z, c.z});
}

void draw(Screen &screen, Corner a, Corner b, Corner c) {
    tavik_triangle t = triangle_of(screen, a, b, c);
    zTriangle(&t);
}

using Row = std::vector<int>;

TEST(Raster, DepthTriangleFillsBothEndsOfItsRows) {
    Screen screen(8, 6);
    draw(screen, {1, 1, 1, 10}, {5, 1, 1, 50}, {1, 5, 1, 90});
    EXPECT_EQ(screen.red(0), (Row{9, 9, 9, 9, 9, 9, 9, 9, 9}));
    EXPECT_EQ(screen.red(1), (Row{9, 10, 20, 30, 40, 50, 9, 9, 9}));
    EXPECT_EQ(screen.red(2), (Row{9, 30, 40, 50, 60, 9, 9, 9, 9}));
    EXPECT_EQ(screen.red(5), (Row{9, 90, 9, 9, 9, 9, 9, 9, 9}));
    EXPECT_EQ(screen.depth[1 * 9 + 3], 1);
    EXPECT_EQ(screen.depth[1 * 9 + 6], 100);
}

TEST(Raster, DepthTriangleStaysInsideItsLimits) {
    Screen screen(5, 4);
    draw(screen, {-9, -7}, {40, -7}, {-9, 40});
    for (int32_t y = 0; y < 4; ++y) EXPECT_EQ(screen.red(y), (Row{50, 50, 50, 50, 50, 9}));

    // All to one side: not even sorted.
    Screen clean(5, 4);
    for (const int32_t x : {-1, 6}) {
        tavik_triangle t = triangle_of(clean, {x, 3}, {x, 1}, {x, 2});
        zTriangle(&t);
        EXPECT_EQ(t.y0, 3);
    }
    EXPECT_EQ(clean, Screen(5, 4));
    // On the limit it is sorted, but not drawn.
    tavik_triangle t = triangle_of(clean, {5, 3}, {5, 1}, {5, 2});
    zTriangle(&t);
    EXPECT_EQ(t.y0, 1);
    EXPECT_EQ(clean, Screen(5, 4));
}

TEST(Raster, DepthTriangleSortsAllFieldsAndKeepsTies) {
    Screen screen(8, 8);
    tavik_triangle t = triangle_of(screen, {1, 6, 0.1F, 11}, {2, 4, 0.2F, 22}, {3, 2, 0.3F, 33});
    t.g0 = 1;
    t.g2 = 3;
    t.b0 = 4;
    t.b2 = 6;
    zTriangle(&t);
    EXPECT_EQ((std::array{t.x0, t.x1, t.x2, t.y0, t.y2, t.r0, t.r2, t.g0, t.g2, t.b0, t.b2}),
              (std::array{3, 2, 1, 2, 6, 33, 11, 3, 1, 6, 4}));
    EXPECT_EQ(t.z0, 0.3F);
    EXPECT_EQ(t.z2, 0.1F);

    // Without height: the first vertex, then the row between the first two.
    Screen flat(8, 8);
    draw(flat, {5, 3}, {2, 3}, {7, 3});
    EXPECT_EQ(flat.red(3), (Row{9, 9, 50, 50, 50, 50, 9, 9, 9}));
}

TEST(Raster, DepthDecidesStrictly) {
    Screen screen(6, 3);
    draw(screen, {0, 0, 5, 10}, {5, 0, 5, 10}, {0, 2, 5, 10});
    draw(screen, {0, 0, 5, 77}, {5, 0, 5, 77}, {0, 2, 5, 77});
    EXPECT_EQ(screen.red(0), (Row{10, 10, 10, 10, 10, 10, 9}));
    draw(screen, {0, 0, 4.5F, 300}, {5, 0, 5.5F, 300}, {0, 2, 4.5F, 300}); // 300 leaves its low byte.
    EXPECT_EQ(screen.red(0), (Row{44, 44, 44, 10, 10, 10, 9}));
    draw(screen, {0, 0, no_number, 1}, {5, 0, 0, 1}, {0, 2, 0, 1});
    EXPECT_EQ(screen.red(0), (Row{44, 44, 44, 10, 10, 10, 9}));
}

// Depth grows by addition from the left end, also over the part that is not visible.
TEST(Raster, SpansAddTheirStepPixelByPixel) {
    Screen screen(64, 2);
    draw(screen, {-30, 0, 0.1F}, {70, 0, 7.7F}, {-30, 1, 0.1F});
    const float step = (7.7F - 0.1F) * (1.0F / 100.0F);
    float z = 0.1F;
    for (int32_t x = -30; x < 0; ++x) z += step;
    for (std::size_t x = 0; x < 64; ++x, z += step) EXPECT_EQ(screen.depth[x], z) << x;
}

// A field of heights with a hole.
std::vector<tavik_mesh_vertex> wavy_mesh(int32_t columns, int32_t rows, int32_t stride) {
    std::vector<tavik_mesh_vertex> grid(static_cast<std::size_t>(stride * rows));
    std::mt19937 random(9);
    for (int32_t j = 0; j < rows; ++j)
        for (int32_t i = 0; i < columns; ++i)
            grid[static_cast<std::size_t>(j * stride + i)] = {
                static_cast<int16_t>(i * 7 - 10 + static_cast<int32_t>(random() % 9)),
                static_cast<int16_t>(j * 6 - 8 + static_cast<int32_t>(random() % 20)),
                static_cast<float>(random() % 100),
                static_cast<uint8_t>(random()),
                static_cast<uint8_t>(random()),
                static_cast<uint8_t>(random()),
                static_cast<uint8_t>(i == 6 && j == 5 ? 0 : 1)};
    return grid;
}

TEST(Raster, BandsOfAMeshTogetherAreTheWhole) {
    constexpr int32_t columns = 14;
    constexpr int32_t rows = 12;
    constexpr int32_t stride = 16;
    const std::vector<tavik_mesh_vertex> grid = wavy_mesh(columns, rows, stride);
    Screen whole(90, 70);
    tavik_triangle record = whole.triangle();
    Render3DHelper(&record, grid.data(), columns, rows, stride, 0, 1);
    EXPECT_NE(whole, Screen(90, 70));
    for (const int32_t bands : {2, 3, 5, 11, 20}) {
        Screen banded(90, 70);
        record = banded.triangle();
        for (int32_t band = 0; band < bands; ++band)
            Render3DHelper(&record, grid.data(), columns, rows, stride, band, bands);
        EXPECT_EQ(banded, whole) << bands;

        Screen parallel(90, 70);
        const tavik_triangle original = parallel.triangle();
        Render3DHelper2(&original, grid.data(), columns, rows, stride, bands);
        EXPECT_EQ(parallel, whole) << bands;
        EXPECT_EQ(original.x0, 0);
    }
}

TEST(Raster, MeshCellsAreTwoTrianglesWithVisibleCorners) {
    // One cell folded so that only its diagonal tells which corners share a triangle.
    std::array<tavik_mesh_vertex, 4> grid = {
        {{1, 1, 1, 10, 0, 0, 1}, {9, 1, 1, 20, 0, 0, 1}, {1, 9, 1, 40, 0, 0, 1}, {9, 9, 1, 30, 0, 0, 1}}};
    Screen mesh(12, 12);
    tavik_triangle record = mesh.triangle();
    Render3DHelper(&record, grid.data(), 2, 2, 2, 0, 1);
    Screen expected(12, 12);
    draw(expected, {1, 1, 1, 10}, {9, 1, 1, 20}, {9, 9, 1, 30});
    draw(expected, {1, 1, 1, 10}, {9, 9, 1, 30}, {1, 9, 1, 40});
    EXPECT_EQ(mesh.planes[0], expected.planes[0]);
    for (std::size_t hidden = 0; hidden < 4; ++hidden) {
        auto with_hidden = grid;
        with_hidden[hidden].visible = 0;
        Screen empty(12, 12);
        record = empty.triangle();
        Render3DHelper(&record, with_hidden.data(), 2, 2, 2, 0, 1);
        EXPECT_EQ(empty, Screen(12, 12));
    }
}

constexpr std::array<float, 16> identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

TEST(Raster, PointsAreProjectedToTheScreen) {
    struct Case {
        std::array<float, 3> point;
        int x, y;
        float z;
        bool visible;
    };
    const Case cases[] = {{{0, 0, 0}, 50, 40, 0, true},        {{0.5F, 0.5F, 0.5F}, 75, 20, 0.5F, true},
                          {{0, 0, 2}, 0, 0, 0, false},         {{-1.02F, 1.0125F, -1}, -1, -1, -1, true},
                          {{700, 0, 0}, 0, 0, 0, false},       {{0, -900, 0}, 0, 0, 0, false},
                          {{0, no_number, 0}, 0, 0, 0, false}, {{0, 0, no_number}, 0, 0, 0, false}};
    for (const Case &c : cases) {
        const uint32_t colour = 0xFF332211;
        tavik_mesh_vertex v;
        Transform3DHelper_2(1, c.point.data(), &colour, identity.data(), 100, 80, &v);
        EXPECT_EQ((std::array<int, 6>{v.x, v.y, v.r, v.g, v.b, v.visible}),
                  (std::array<int, 6>{c.x, c.y, 0x11, 0x22, 0x33, c.visible ? 1 : 0}));
        EXPECT_EQ(v.z, c.z);
    }

    const std::array<float, 4> heights = {0, 0.25F, 0, -1};
    const std::array<uint8_t, 4> colours = {1, 2, 3, 4};
    std::array<tavik_mesh_vertex, 4> grid;
    Transform3DHelper(2, 2, heights.data(), 2, colours.data(), colours.data(), colours.data(), identity.data(), 100, 80,
                      grid.data());
    EXPECT_EQ((std::array<int, 6>{grid[0].x, grid[0].y, grid[1].x, grid[1].y, grid[2].x, grid[2].y}),
              (std::array<int, 6>{25, 60, 75, 60, 25, 20}));
    EXPECT_EQ(grid[1].z, 0.5F);
    EXPECT_EQ(grid[3].visible, 0);
    EXPECT_EQ(grid[3].g, 4);
}

TEST(Raster, CoveredTrianglesShareTheirEdgeExactly) {
    // The two triangles of a square, and of every split of one about an inner point: all pixels, none twice.
    for (int32_t y = 2; y < 9; ++y) {
        for (int32_t x = 2; x < 9; ++x) {
            std::vector<int> visits(12 * 12);
            const std::array<Corner, 4> square = {{{1, 1}, {9, 1}, {9, 9}, {1, 9}}};
            for (std::size_t i = 0; i < 4; ++i) {
                Screen screen(11, 12);
                const tavik_triangle t = triangle_of(screen, square[i], {x, y}, square[(i + 1) % 4]);
                TriangleColor(&t);
                for (std::size_t at = 0; at < visits.size(); ++at) visits[at] += screen.planes[0][at] == 50;
            }
            for (int32_t at = 0; at < 144; ++at) {
                const bool inside = at % 12 >= 1 && at % 12 < 9 && at / 12 >= 1 && at / 12 < 9;
                ASSERT_EQ(visits[static_cast<std::size_t>(at)], inside ? 1 : 0) << x << ' ' << y << ' ' << at;
            }
        }
    }
    Screen half(10, 10);
    const tavik_triangle t = triangle_of(half, {1, 1}, {9, 1}, {1, 9});
    TriangleColor(&t);
    EXPECT_EQ(std::count(half.planes[0].begin(), half.planes[0].end(), 50), 36);
}

TEST(Raster, TriangleColorInterpolatesAndRounds) {
    Screen screen(9, 9);
    for (const bool mirrored : {false, true}) {
        const Corner right = {8, 0, 0, 80};
        const Corner below = {0, 8, 0, 160};
        const tavik_triangle t = triangle_of(screen, {0, 0, 0, 0}, mirrored ? below : right, mirrored ? right : below);
        TriangleColor(&t);
        EXPECT_EQ(screen.red(0), (Row{0, 10, 20, 30, 40, 50, 60, 70, 9, 9}));
        EXPECT_EQ(screen.red(3), (Row{60, 70, 80, 90, 100, 9, 9, 9, 9, 9}));
    }
    // Far beyond the planes, where sums of edges need all 64 bits.
    Screen wide(9, 9);
    const tavik_triangle t =
        triangle_of(wide, {-2000000000, -2000000000}, {2000000000, -2000000000}, {0, 2000000000, 0, 50});
    TriangleColor(&t);
    EXPECT_EQ(wide.red(8), (Row{50, 50, 50, 50, 50, 50, 50, 50, 50, 9}));
}

struct TexturedScreen {
    Planes texture = planes_of(81, 0);
    Planes planes = planes_of(81, 9);
    Floats depth = Floats(81, 100);

    TexturedScreen() {
        for (auto &plane : texture)
            for (std::size_t i = 0; i < 81; ++i) plane[i] = static_cast<uint8_t>(i % 9 * 10 + i / 9);
    }

    // A right triangle whose texture lies as the picture does.
    tavik_textured_triangle triangle(float w1, int32_t smooth) {
        return record<tavik_textured_triangle>(std::array<float, 15>{0, 0, 1, 0, 0, 8, 0, w1, 8, 0, 0, 8, 1, 0, 8}, 9,
                                               9, 9, 9, smooth, texture, planes, depth);
    }
    Row red(std::size_t y) const {
        return {planes[0].begin() + static_cast<std::ptrdiff_t>(9 * y),
                planes[0].begin() + static_cast<std::ptrdiff_t>(9 * y + 9)};
    }
};

TEST(Raster, TexturesAreDrawnInPerspective) {
    TexturedScreen flat;
    tavik_textured_triangle t = flat.triangle(1, 0);
    xTriangle_Perspective(&t);
    EXPECT_EQ(flat.red(0), (Row{0, 10, 20, 30, 40, 50, 60, 70, 9}));
    EXPECT_EQ(flat.red(6), (Row{6, 16, 9, 9, 9, 9, 9, 9, 9}));
    EXPECT_EQ(flat.depth[3], 1);

    TexturedScreen deep;
    t = deep.triangle(3, 1);
    xTriangle_Perspective(&t);
    EXPECT_EQ(deep.red(0), (Row{0, 4, 8, 13, 20, 29, 40, 56, 9}));
    const auto before = deep.planes;
    t = deep.triangle(3, 0); // Not nearer than itself.
    xTriangle_Perspective(&t);
    EXPECT_EQ(deep.planes, before);
}

tavik_clipped_triangle in_camera_space(const tavik_textured_triangle &t, float z0, float z1, float z2) {
    const auto back = [](float at, float z) { return (at - 4) * z / 4; };
    return record<tavik_clipped_triangle>(
        std::array{back(t.x0, z0), back(t.y0, z0), z0, t.u0, t.v0, back(t.x1, z1), back(t.y1, z1), z1, t.u1, t.v1,
                   back(t.x2, z2), back(t.y2, z2), z2, t.u2, t.v2, 4.0F, 4.0F, 4.0F, 0.5F},
        9, 9, 9, 9, t.smooth, t.texture_r, t.texture_g, t.texture_b, t.plane_r, t.plane_g, t.plane_b, t.depth);
}

TEST(Raster, TrianglesAreCutAtTheNearPlane) {
    TexturedScreen clipped;
    TexturedScreen projected;
    const tavik_clipped_triangle in_front = in_camera_space(clipped.triangle(4, 1), 1, 4, 1);
    xTriangle_Clipped(&in_front);
    const tavik_textured_triangle expected = projected.triangle(4, 1);
    xTriangle_Perspective(&expected);
    EXPECT_EQ(clipped.planes, projected.planes);
    EXPECT_EQ(clipped.depth, projected.depth);

    TexturedScreen empty;
    const tavik_clipped_triangle behind = in_camera_space(empty.triangle(1, 1), 0.4F, 0.25F, -1);
    xTriangle_Clipped(&behind);
    EXPECT_EQ(empty.planes, TexturedScreen().planes);

    // A floor below the eye that runs from behind it to the horizon fills the lower half, nearest row at the plane.
    TexturedScreen floor;
    tavik_clipped_triangle t = in_camera_space(floor.triangle(1, 0), 1, 1, 1);
    const std::array<float, 15> corners = {-900, 1, -50, 0, 0, 900, 1, -50, 8, 0, 0, 1, 900, 4, 8};
    std::copy(corners.begin(), corners.end(), &t.x0);
    xTriangle_Clipped(&t);
    for (std::size_t y = 0; y < 9; ++y)
        for (std::size_t x = 0; x < 9; ++x)
            EXPECT_EQ(floor.planes[0][9 * y + x] != 9 || floor.depth[9 * y + x] != 100, y > 4) << x << ' ' << y;
    EXPECT_NEAR(floor.depth[9 * 8 + 4], 1, 1e-3);
}

// The planes of a picture of w.height rows, of which x_limit = w.width - 1 columns are drawn.
tavik_triangle triangle_on(Workspace &w) {
    return record<tavik_triangle>(std::array<int32_t, 15>(), std::array<float, 3>(), w.width - 1, w.height, w.buffers(),
                                  w.floats(w.count(), 0, 100));
}

// Corners in, around and well beyond the picture.
template <class Draw> void draw_some(Workspace &w, const Draw &draw_one) {
    tavik_triangle t = triangle_on(w);
    for (int i = 0; i < 6; ++i) {
        for (int32_t *x : {&t.x0, &t.x1, &t.x2}) *x = w.integer(-w.width / 2 - 2, w.width * 3 / 2 + 2);
        for (int32_t *y : {&t.y0, &t.y1, &t.y2}) *y = w.integer(-w.height / 2 - 2, w.height * 3 / 2 + 2);
        for (float *z : {&t.z0, &t.z1, &t.z2}) *z = w.real(0, 100);
        for (int32_t *colour : {&t.r0, &t.r1, &t.r2, &t.g0, &t.g1, &t.g2, &t.b0, &t.b1, &t.b2})
            *colour = w.integer(0, 255);
        draw_one(t);
    }
}

// The same for a record with a texture, at distances above `nearest`.
template <class Triangle, class Draw> void draw_textured(Workspace &w, const Draw &draw_one, float nearest) {
    const tavik_triangle target = triangle_on(w);
    Triangle t = {};
    t.texture_width = t.width = w.width;
    t.texture_height = t.height = w.height;
    t.texture_r = w.buffer(w.count());
    t.texture_g = w.buffer(w.count());
    t.texture_b = w.buffer(w.count());
    t.plane_r = target.plane_r;
    t.plane_g = target.plane_g;
    t.plane_b = target.plane_b;
    t.depth = target.depth;
    for (t.smooth = 0; t.smooth < 6; ++t.smooth) {
        const float across = static_cast<float>(w.width) + 9;
        const float down = static_cast<float>(w.height) + 9;
        for (float *x : {&t.x0, &t.x1, &t.x2, &t.u0, &t.u1, &t.u2}) *x = w.real(-10, across);
        for (float *y : {&t.y0, &t.y1, &t.y2, &t.v0, &t.v1, &t.v2}) *y = w.real(-10, down);
        if constexpr (requires { t.w0; })
            for (float *distance : {&t.w0, &t.w1, &t.w2}) *distance = w.real(nearest, 90);
        else
            for (float *distance : {&t.z0, &t.z1, &t.z2}) *distance = w.real(nearest, 90);
        draw_one(&t);
    }
}

// 9 columns × 7 rows in and around the picture, in rows of 10.
const tavik_mesh_vertex *mesh_on(Workspace &w) {
    constexpr std::size_t vertices = 10 * 7 - 1;
    auto *grid = w.buffer<tavik_mesh_vertex>(vertices);
    for (std::size_t i = 0; i < vertices; ++i) {
        grid[i].x = static_cast<int16_t>(w.integer(-w.width / 2 - 2, w.width * 3 / 2 + 2));
        grid[i].y = static_cast<int16_t>(w.integer(-w.height / 2 - 2, w.height * 3 / 2 + 2));
        grid[i].z = w.real(0, 100);
        grid[i].visible = w.integer(0, 9) > 0 ? 1 : 0;
    }
    return grid;
}

const BulkCase cases[] = {
    {"zTriangle", [](Workspace &w) { draw_some(w, [](tavik_triangle &t) { zTriangle(&t); }); }},
    {"TriangleColor", [](Workspace &w) { draw_some(w, [](tavik_triangle &t) { TriangleColor(&t); }); }},
    {"xTriangle_Perspective",
     [](Workspace &w) { draw_textured<tavik_textured_triangle>(w, xTriangle_Perspective, 1); }},
    {"xTriangle_Clipped",
     [](Workspace &w) {
         draw_textured<tavik_clipped_triangle>(
             w,
             [&](tavik_clipped_triangle *t) {
                 t->centre_x = t->centre_y = 0;
                 t->focal = 20;
                 t->nearest = w.real(1, 9);
                 xTriangle_Clipped(t);
             },
             -50);
     }},
    {"Render3DHelper",
     [](Workspace &w) {
         tavik_triangle target = triangle_on(w);
         const auto *grid = mesh_on(w);
         for (int32_t band = 0; band < 3; ++band) Render3DHelper(&target, grid, 9, 7, 10, band, 3);
     }},
    {"Render3DHelper2",
     [](Workspace &w) {
         const tavik_triangle target = triangle_on(w);
         Render3DHelper2(&target, mesh_on(w), 9, 7, 10, w.integer(1, 9));
     }},
    {"Transform3DHelper",
     [](Workspace &w) {
         call(Transform3DHelper, w.size(), w.floats(w.count(), -2, 2), 0.5F, w.buffers(), w.floats(16, -2, 2), 100, 80,
              w.result<tavik_mesh_vertex>());
     }},
    {"Transform3DHelper_2",
     [](Workspace &w) {
         Transform3DHelper_2(static_cast<int32_t>(w.count()), w.floats(3 * w.count(), -2, 2), w.buffer<uint32_t>(),
                             w.floats(16, -2, 2), 100, 80, w.result<tavik_mesh_vertex>());
     }},
};

const BulkFamily family("Raster", cases);

} // namespace
