#include "tavik/resample/resample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "host/chart.h"
#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"
#include "host/sizes.h"

namespace gallery {

using namespace chart;

namespace {

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

} // namespace

Family resample_family() {
    return {
        "resample",
        "Pictures made larger and smaller.",
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
            {"resampling_curves",
             "Kernels as curves",
             "A straight, a Catmull-Rom and a B-spline course.",
             {"Bilerp", "f_bicubicInterpolate", "Bspline"},
             curves},
        },
    };
}

} // namespace gallery
