#include "tavik/resample/resample.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/chart.h"
#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"
#include "host/sizes.h"

namespace gallery {

using namespace chart;

namespace {

// The rotation leaves the last columns and rows, which get the background here.
void rotate(Run &run) {
    constexpr Colour background = {32, 44, 60};
    const Image &photo = run.photo;
    Image &picture = run.draw_on(photo.width, photo.height, background);
    const Plane opaque(photo.red.size(), 255);
    Plane alpha(photo.red.size());
    run.label("opaque", opaque);
    run.label("alpha", alpha);
    run.call(EXPORT(FasterScaleRotate), photo.red.data(), photo.green.data(), photo.blue.data(), opaque.data(),
             picture.red.data(), picture.green.data(), picture.blue.data(), alpha.data(), photo.x_max(), photo.y_max(),
             photo.x_max(), photo.y_max(), 0.75F, 0.9396926F, 0.34202015F, int32_t{background.red},
             int32_t{background.green}, int32_t{background.blue});
}

// Each channel by another angle.
void rotate_channels(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.draw_on(photo.width, photo.height, {0, 0, 0});
    for (std::size_t k = 0; k < 3; ++k) {
        const float angle = 0.06F * (static_cast<float>(k) - 1);
        run.call(EXPORT(ScaleRotate_8_noAA), photo.planes()[k], picture.planes()[k], photo.x_max(), photo.y_max(),
                 photo.x_max(), photo.y_max(), 0.9F, std::cos(angle), std::sin(angle));
    }
}

// A free transform of the photo: where its corners go, and the matrix back.
struct Placement {
    float left, right, top, bottom;
    float centre_x, centre_y;
    std::array<float, 16> matrix;
};

// Turned by an angle and made smaller. The corners are turned by RotatePoint; the matrix takes them back, which
// TransformPoint shows.
Placement placed(Run &run, float degrees, float zoom) {
    const Image &photo = run.photo;
    const float centre_x = ratio(photo.x_max(), 2);
    const float centre_y = ratio(photo.y_max(), 2);
    float cosine = 1 / zoom;
    float sine = 0;
    run.call(EXPORT(RotatePoint), -degrees, &cosine, &sine);
    Placement to = {1e9F,
                    -1e9F,
                    1e9F,
                    -1e9F,
                    centre_x,
                    centre_y,
                    {cosine, sine, 0, 0, -sine, cosine, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    float largest_error = 0;
    for (const Point corner :
         {Point{-centre_x, -centre_y}, {centre_x, -centre_y}, {centre_x, centre_y}, {-centre_x, centre_y}}) {
        std::array<float, 3> point = {corner.x * zoom, corner.y * zoom, 0};
        run.call(EXPORT(RotatePoint), degrees, &point[0], &point[1]);
        to.left = std::min(to.left, point[0] + centre_x);
        to.right = std::max(to.right, point[0] + centre_x);
        to.top = std::min(to.top, point[1] + centre_y);
        to.bottom = std::max(to.bottom, point[1] + centre_y);
        run.call(EXPORT(TransformPoint), point.data(), point.data(), to.matrix.data());
        largest_error = std::max({largest_error, std::abs(point[0] - corner.x), std::abs(point[1] - corner.y)});
    }
    if (largest_error > 0.01F) run.note("The matrix misses a corner.");
    return to;
}

template <class Function> void transform_planes(Run &run, Export<Function> transform) {
    const Placement to = placed(run, -12, 0.85F);
    for (uint8_t *plane : run.picture.planes()) std::fill_n(plane, run.photo.red.size(), uint8_t{40});
    for (const auto [source, target] : run.channels())
        run.call(transform, to.left, to.right, to.top, to.bottom, to.centre_x, to.centre_y, run.photo.x_max(),
                 run.photo.y_max(), source, target, to.matrix.data());
}

// The fourth plane is the layer's opacity, soft at its edge, over a checkerboard.
void transform_with_transparency(Run &run) {
    const Image &photo = run.photo;
    const Plane opacity = plane_of(photo, [](float x, float y) { return 12 * std::min({x, y, 1 - x, 1 - y}); });
    Image moved(photo.width, photo.height);
    Plane moved_opacity(photo.red.size());
    run.label("opacity", opacity);
    run.label("moved red", moved.red);
    run.label("moved green", moved.green);
    run.label("moved blue", moved.blue);
    run.label("moved opacity", moved_opacity);
    const Placement to = placed(run, 15, 0.8F);
    run.call(EXPORT(xfreetransform_aa), to.left, to.right, to.top, to.bottom, to.centre_x, to.centre_y, photo.x_max(),
             photo.y_max(), photo.red.data(), photo.green.data(), photo.blue.data(), opacity.data(), moved.red.data(),
             moved.green.data(), moved.blue.data(), moved_opacity.data(), to.matrix.data());
    Image &picture = run.draw_on(photo.width, photo.height, paper);
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < photo.width; ++x) {
            const std::size_t i = photo.index(x, y);
            const int32_t below = x / 16 % 2 == y / 16 % 2 ? 235 : 205;
            for (std::size_t k = 0; k < 3; ++k)
                picture.planes()[k][i] = static_cast<uint8_t>(
                    (moved.planes()[k][i] * moved_opacity[i] + below * (255 - moved_opacity[i])) / 255);
        }
    }
}

// Halves of the photo, each beside its mirror image. The vertical mirror leaves the last column, copied from beside it.
void mirror_across(Run &run) {
    for (const auto [source, target] : run.channels())
        run.call(EXPORT(FastHMirror), source, target, run.photo.x_max(), run.photo.y_max());
}

void mirror_down(Run &run) {
    const Image &photo = run.photo;
    for (const auto [source, target] : run.channels()) {
        run.call(EXPORT(FastVMirror), source, target, photo.x_max(), photo.y_max());
        for (int32_t y = 0; y < photo.height; ++y)
            target[photo.index(photo.x_max(), y)] = target[photo.index(photo.x_max() - 1, y)];
    }
}

// Rows of three-byte pixels, each scaled a little more than the one above: a perspective.
void scale_rows(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.draw_on(photo.width, photo.height, {24, 28, 36});
    Plane pixels;
    for (std::size_t i = 0; i < photo.red.size(); ++i)
        pixels.insert(pixels.end(), {photo.blue[i], photo.green[i], photo.red[i]});
    run.label("pixels", pixels);
    Plane row(3 * static_cast<std::size_t>(photo.width));
    run.label("row", row);
    for (int32_t y = 0; y < photo.height; ++y) {
        const int32_t width = photo.width / 3 + (photo.width - photo.width / 3) * y / photo.height;
        run.call(EXPORT(ScaleHelper), photo.width, 0, width - 1, scale_between(photo.width, width), 1, pixels.data(),
                 row.data(), 0, y * photo.width);
        const int32_t left = (photo.width - width) / 2;
        for (int32_t x = 0; x < width; ++x) {
            const uint8_t *pixel = &row[3 * static_cast<std::size_t>(x)];
            picture.set(left + x, y, {pixel[2], pixel[1], pixel[0]});
        }
    }
}

// A grid of a few nodes, displaced by a wave, becomes a displacement for each pixel; BilinearSample reads the photo.
void warp_by_grid(Run &run) {
    const Image &photo = run.photo;
    constexpr int32_t nodes_across = 9;
    constexpr int32_t nodes_down = 7;
    Image &picture = run.draw_on(photo.width / 2, photo.height / 2, paper);
    std::vector<float> nodes;
    for (int32_t j = 0; j < nodes_down; ++j) {
        for (int32_t i = 0; i < nodes_across; ++i) {
            const bool moves = i > 0 && j > 0 && i < nodes_across - 1 && j < nodes_down - 1;
            const float reach = moves ? ratio(photo.width, 30) : 0;
            nodes.push_back(reach * std::sin(2.1F * static_cast<float>(j)));
            nodes.push_back(reach * std::sin(1.7F * static_cast<float>(i)));
        }
    }
    // One column and row more, which the grid leaves.
    std::vector<float> moves(2 * area(picture.width + 1, picture.height + 1));
    run.label("nodes", nodes);
    run.label("moves", moves);
    run.call(EXPORT(xBilinearScalePointf), picture.width, picture.height, nodes_across - 1, nodes_down - 1,
             nodes.data(), moves.data());
    for (std::size_t k = 0; k < 3; ++k) {
        for (int32_t y = 0; y < picture.height; ++y) {
            for (int32_t x = 0; x < picture.width; ++x) {
                const float *move = &moves[2 * (area(picture.width + 1, y) + static_cast<std::size_t>(x))];
                const int32_t sample =
                    run.call(EXPORT(BilinearSample), static_cast<float>(2 * x) + move[0],
                             static_cast<float>(2 * y) + move[1], photo.width, photo.height, photo.planes()[k]);
                picture.planes()[k][picture.index(x, y)] = static_cast<uint8_t>(std::clamp(sample, 0, 255));
            }
        }
    }
}

// A square turned by RotatePoint, again and again, each time smaller, and a cube's corners through a perspective.
void points(Run &run) {
    Image &picture = run.draw_on(1280, 640, paper);
    std::array<Point, 5> square = {{{-280, -280}, {280, -280}, {280, 280}, {-280, 280}, {-280, -280}}};
    run.label("square", square);
    for (int32_t step = 0; step < 30; ++step) {
        std::array<Point, 5> drawn = square;
        for (Point &point : drawn) point = {point.x + 320, point.y + 320};
        draw_line(picture, drawn, 2, step % 2 == 0 ? red : pale);
        for (Point &point : square) {
            run.call(EXPORT(RotatePoint), 6.0F, &point.x, &point.y);
            point = {point.x * 0.91F, point.y * 0.91F};
        }
    }

    // Seen from in front of it and above: w grows with the depth.
    const std::array<float, 16> matrix = {230, -40, 0, 0.2F, 0, 230, 0, 0.1F, 110, 70, 0, 0.3F, 0, 0, 0, 1.7F};
    run.label("matrix", matrix);
    std::array<float, 3> point = {};
    std::array<float, 3> seen = {};
    run.label("corner", point);
    run.label("seen", seen);
    const auto corner = [&](uint32_t index) {
        const auto side = [&](uint32_t bit) { return (index >> bit & 1) != 0 ? 1.0F : -1.0F; };
        point = {side(0), side(1), side(2)};
        run.call(EXPORT(TransformPoint), point.data(), seen.data(), matrix.data());
        return Point{seen[0] + 980, seen[1] + 320};
    };
    for (uint32_t index = 0; index < 8; ++index)
        for (uint32_t bit = 0; bit < 3; ++bit)
            if ((index >> bit & 1) == 0)
                draw_line(picture, std::array{corner(index), corner(index | 1U << bit)}, 4, bit == 2 ? blue : green);
}

} // namespace

Family transforms_family() {
    return {
        "transforms",
        "Pictures turned, moved, mirrored and bent by grids.",
        {
            {"rotate", "Rotation", "Turned by 20 degrees onto a background.", {"FasterScaleRotate"}, rotate},
            {"rotate_channels",
             "Channels apart",
             "Red, green and blue turned by different angles.",
             {"ScaleRotate_8_noAA"},
             rotate_channels},
            {"transform_nearest",
             "Free transform",
             "Turned and made smaller over a grey ground, nearest sample.",
             {"RotatePoint", "TransformPoint", "xfreetransformalpha"},
             [](Run &run) { transform_planes(run, EXPORT(xfreetransformalpha)); }},
            {"transform_smooth",
             "Smooth free transform",
             "The same with samples interpolated.",
             {"RotatePoint", "TransformPoint", "xfreetransformalpha_aa"},
             [](Run &run) { transform_planes(run, EXPORT(xfreetransformalpha_aa)); }},
            {"transform_opacity",
             "Transparent transform",
             "Four planes at once; the fourth is an opacity that fades at the edge.",
             {"RotatePoint", "TransformPoint", "xfreetransform_aa"},
             transform_with_transparency},
            {"mirror_across", "Mirrored across", "The right half on the left.", {"FastHMirror"}, mirror_across},
            {"mirror_down", "Mirrored down", "The upper half below.", {"FastVMirror"}, mirror_down},
            {"scale_rows",
             "Rows into a perspective",
             "Each row of three-byte pixels scaled to a length of its own.",
             {"ScaleHelper"},
             scale_rows},
            {"warp_by_grid",
             "Bent by a grid",
             "A grid of 9 × 7 displacements, resized to one for each pixel.",
             {"xBilinearScalePointf", "BilinearSample"},
             warp_by_grid},
            {"turned_points",
             "Turned and projected",
             "A square turned six degrees at a time, and a cube in perspective.",
             {"RotatePoint", "TransformPoint"},
             points},
        },
    };
}

} // namespace gallery
