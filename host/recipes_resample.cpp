#include "tavik/resample/resample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"

namespace gallery {
namespace {

constexpr Colour paper = {250, 250, 252};
constexpr Colour ink = {60, 66, 80};
constexpr Colour red = {214, 64, 69};
constexpr Colour blue = {47, 111, 214};
constexpr Colour green = {28, 150, 110};
constexpr Colour pale = {160, 168, 184};

std::size_t area(int32_t width, int32_t height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

float ratio(int32_t a, int32_t b) { return static_cast<float>(a) / static_cast<float>(b); }

// Source units per destination unit. The last position stays inside the source.
float scale_between(int32_t from, int32_t to) { return ratio(from - 1, to); }

Image cut_out(const Image &image, int32_t left, int32_t top, int32_t width, int32_t height) {
    Image part(width, height);
    const auto from = image.planes();
    const auto to = part.planes();
    for (std::size_t k = 0; k < to.size(); ++k)
        for (int32_t y = 0; y < height; ++y)
            std::copy_n(from[k] + image.index(left, top + y), width, to[k] + part.index(0, y));
    return part;
}

// The middle of the photo, where its subject is.
Image detail_of(const Image &photo, int32_t parts) {
    return cut_out(photo, photo.width / 2 - photo.width / parts / 2, photo.height / 2 - photo.height / parts / 2,
                   photo.width / parts, photo.height / parts);
}

// Rows, then columns.
void resize_in_two_passes(Run &run, const Image &from, Image &to) {
    Plane between(area(to.width, from.height));
    run.label("between", between);
    const auto sources = from.planes();
    const auto targets = to.planes();
    for (std::size_t k = 0; k < targets.size(); ++k) {
        run.call(EXPORT(DoCubicPass1Helper), sources[k], between.data(), to.x_max(), 0, from.x_max(), from.height,
                 scale_between(from.width, to.width), 0);
        run.call(EXPORT(DoCubicPass2Helper), between.data(), targets[k], to.x_max(), to.height, 0, from.y_max(), 0.0F,
                 scale_between(from.height, to.height));
    }
}

void enlarge(Run &run) {
    run.layer = detail_of(run.photo, 4);
    resize_in_two_passes(run, *run.layer, run.draw_on(run.layer->width * 4, run.layer->height * 4, paper));
}

void enlarge_at_once(Run &run) {
    run.layer = detail_of(run.photo, 4);
    const Image &from = *run.layer;
    Image &to = run.draw_on(from.width * 4, from.height * 4, paper);
    const auto targets = to.planes();
    for (std::size_t k = 0; k < targets.size(); ++k)
        run.call(EXPORT(xBiCubicHelper), from.planes()[k], targets[k], to.width, to.height, from.width, from.height,
                 scale_between(from.width - 1, to.width), scale_between(from.height - 1, to.height));
}

// The target that a box filter takes for an even span of so many samples or a few more. Those of an odd one would come
// half a row further on.
int32_t target_for(int32_t bound, int32_t span) {
    int32_t target = std::max(bound / span, 1);
    while (target > 1 && bound / target % 2 != 0) --target;
    return target;
}

// A box filter of both directions. Where it leaves the last row or column, the unfiltered samples stay.
Image prefiltered(Run &run, const Image &from, int32_t span) {
    Image along_rows = from;
    Image both = from;
    for (std::size_t k = 0; k < 3; ++k) {
        run.call(EXPORT(PrefilterCubicPass1Helper), from.planes()[k], along_rows.planes()[k],
                 target_for(from.x_max(), span), 0, from.x_max(), from.height);
        run.call(EXPORT(PrefilterCubicPass2Helpter), std::as_const(along_rows).planes()[k], both.planes()[k],
                 from.x_max(), target_for(from.y_max(), span), 0, from.y_max());
    }
    return both;
}

// Rings that become finer outward: what is too fine for the reduced picture turns into other patterns.
Image rings(int32_t width, int32_t height) {
    Image image(width, height);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const float dx = ratio(2 * x - width, height);
            const float dy = ratio(2 * y - height, height);
            const uint8_t shade = level(0.5F + 0.5F * std::cos(180 * (dx * dx + dy * dy)));
            image.set(x, y, {shade, shade, shade});
        }
    }
    return image;
}

// Left as it is, right after the box filter; above the photo, below rings.
void reduce(Run &run) {
    constexpr int32_t margin = 12;
    const int32_t width = run.photo.width / 4;
    const int32_t height = run.photo.height / 4;
    Image &picture = run.draw_on(2 * width + 3 * margin, 2 * height + 3 * margin, paper);
    int32_t top = margin;
    for (const Image &from : {run.photo, rings(run.photo.width, run.photo.height)}) {
        Image plain(width, height);
        resize_in_two_passes(run, from, plain);
        paste(picture, plain, margin, top);
        Image smooth(width, height);
        resize_in_two_passes(run, prefiltered(run, from, 4), smooth);
        paste(picture, smooth, width + 2 * margin, top);
        top += height + margin;
    }
}

// From the photo on the left to its box-filtered planes on the right.
void soften(Run &run) {
    const Image &photo = run.photo;
    const Image filtered = prefiltered(run, photo, 16);
    std::vector<float> values(photo.red.size());
    run.label("values", values);
    constexpr int32_t strips = 5;
    for (std::size_t k = 0; k < 3; ++k) {
        for (int32_t strip = 0; strip < strips; ++strip) {
            std::copy_n(filtered.planes()[k], values.size(), values.begin());
            run.call(EXPORT(xprefilterlerp), photo.width, photo.height, ratio(strip, strips - 1), values.data(),
                     photo.planes()[k]);
            for (int32_t y = 0; y < photo.height; ++y)
                for (int32_t x = photo.width * strip / strips; x < photo.width * (strip + 1) / strips; ++x)
                    run.picture.planes()[k][photo.index(x, y)] = static_cast<uint8_t>(values[photo.index(x, y)]);
        }
    }
}

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

void draw_key(Image &picture, int32_t left, const char *text, Colour colour) {
    fill(picture, left, 28, 36, 8, colour);
    draw_text(picture, left + 48, 20, 3, text, ink);
}

// One point for each pixel across the samples.
template <class Value> std::vector<Point> curve(std::size_t samples, const Value &value) {
    constexpr int32_t width = 1240;
    std::vector<Point> points;
    for (int32_t i = 0; i <= width; ++i) {
        const float x = ratio(i, width) * static_cast<float>(samples - 1);
        const auto whole = std::min(static_cast<int32_t>(x), static_cast<int32_t>(samples) - 2);
        points.push_back({static_cast<float>(40 + i), 600 - 2 * value(whole, x - static_cast<float>(whole))});
    }
    return points;
}

void curves(Run &run) {
    constexpr std::array<int32_t, 11> samples = {40, 60, 190, 230, 90, 30, 30, 240, 150, 180, 70};
    const auto at = [&](int32_t i) {
        return samples[static_cast<std::size_t>(std::clamp(i, 0, static_cast<int32_t>(samples.size()) - 1))];
    };
    const auto real = [&](int32_t i) { return static_cast<float>(at(i)); };
    Image &picture = run.draw_on(1320, 640, paper);
    std::array<float, 16> patch;
    run.label("patch", patch);
    draw_line(picture,
              curve(samples.size(),
                    [&](int32_t i, float t) {
                        return static_cast<float>(
                            run.call(EXPORT(Bilerp), at(i), at(i + 1), at(i), at(i + 1), t, 0.0F));
                    }),
              3, pale);
    draw_line(picture,
              curve(samples.size(),
                    [&](int32_t i, float t) {
                        for (int32_t k = 0; k < 16; ++k) patch[static_cast<std::size_t>(k)] = real(i - 1 + k / 4);
                        return run.call(EXPORT(f_bicubicInterpolate), patch.data(), t, 0.5F);
                    }),
              3, blue);
    draw_line(picture,
              curve(samples.size(),
                    [&](int32_t i, float t) {
                        return run.call(EXPORT(Bspline), real(i - 1), real(i), real(i + 1), real(i + 2), t);
                    }),
              3, red);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const Point centre = {40 + 124 * static_cast<float>(i), 600 - 2 * static_cast<float>(samples[i])};
        draw_line(picture, std::array{centre, centre}, 14, ink);
    }
    draw_key(picture, 40, "Bilerp", pale);
    draw_key(picture, 300, "f_bicubicInterpolate", blue);
    draw_key(picture, 760, "Bspline", red);
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

Family resample_family() {
    return {
        "resample",
        "Pictures made larger and smaller, turned, bent and mirrored.",
        {
            {"enlarge",
             "Four times as large",
             "The middle of the photo, resized along rows and then along columns by the Catmull-Rom cubic.",
             {"DoCubicPass1Helper", "DoCubicPass2Helper"},
             enlarge},
            {"enlarge_at_once",
             "Enlarged at once",
             "The same by one pass over patches of 4 × 4 samples.",
             {"xBiCubicHelper"},
             enlarge_at_once},
            {"reduce",
             "A quarter as large",
             "The photo and fine rings, left as they are and right after the box filter, which spares false patterns.",
             {"DoCubicPass1Helper", "DoCubicPass2Helper", "PrefilterCubicPass1Helper", "PrefilterCubicPass2Helpter"},
             reduce},
            {"soften",
             "Box filter by degrees",
             "From the photo on the left to averages of 16 × 16 samples on the right.",
             {"PrefilterCubicPass1Helper", "PrefilterCubicPass2Helpter", "xprefilterlerp"},
             soften},
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
            {"resampling_curves",
             "Kernels as curves",
             "A straight, a Catmull-Rom and a B-spline course.",
             {"Bilerp", "f_bicubicInterpolate", "Bspline"},
             curves},
            {"turned_points",
             "Turned and projected",
             "A square turned six degrees at a time, and a cube in perspective.",
             {"RotatePoint", "TransformPoint"},
             points},
        },
    };
}

} // namespace gallery
