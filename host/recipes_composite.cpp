#include "tavik/composite/composite.h"

#include <algorithm>
#include <cmath>

#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"

namespace gallery {
namespace {

// Hands each row of the picture to draw(row, y) as a display row: blue, green, red for each pixel.
template <class Draw> void on_display_rows(Run &run, const Draw &draw) {
    Image &picture = run.picture;
    Plane row(3 * static_cast<std::size_t>(picture.width));
    run.label("row", row);
    for (int32_t y = 0; y < picture.height; ++y) {
        for (int32_t x = 0; x < picture.width; ++x) {
            uint8_t *pixel = &row[3 * static_cast<std::size_t>(x)];
            const std::size_t i = picture.index(x, y);
            pixel[0] = picture.blue[i];
            pixel[1] = picture.green[i];
            pixel[2] = picture.red[i];
        }
        draw(row.data(), y);
        for (int32_t x = 0; x < picture.width; ++x) {
            const uint8_t *pixel = &row[3 * static_cast<std::size_t>(x)];
            picture.set(x, y, {pixel[2], pixel[1], pixel[0]});
        }
    }
}

void matte(Run &run) {
    const Plane mask =
        plane_of(run.photo, [](float x, float y) { return distance(x, y, 0.5F, 0.5F) < 0.35F ? 0.0F : 1.0F; });
    run.label("mask", mask);
    const int32_t width = run.photo.width;
    on_display_rows(run, [&](uint8_t *row, int32_t y) {
        run.call(EXPORT(Matte_preview_helper), row, mask.data(), width, 0, width, y * width, 230, 40, 60, 0, 150);
    });
}

void overlay_preview(Run &run) {
    const Plane mask = oval_mask(run.photo);
    run.label("mask", mask);
    const int32_t width = run.photo.width;
    on_display_rows(run, [&](uint8_t *row, int32_t y) {
        run.call(EXPORT(alpha_overlay_helper), 0, 0, y * width, y * width + width - 1, run.photo.green.data(),
                 mask.data(), row, 1);
    });
}

// A dark disc on white paper, a step further along an arc with each frame.
Image frame_with_disc(const Image &photo, int32_t number) {
    Image frame(photo.width, photo.height, {255, 255, 255});
    const float along = static_cast<float>(number) / 5;
    const float centre_x = 0.2F + 0.6F * along;
    const float centre_y = 0.7F - 0.4F * std::sin(3.1416F * along);
    const float aspect = static_cast<float>(photo.width) / static_cast<float>(photo.height);
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < photo.width; ++x) {
            const float dx = (static_cast<float>(x) / static_cast<float>(photo.width) - centre_x) * aspect;
            const float dy = static_cast<float>(y) / static_cast<float>(photo.height) - centre_y;
            if (dx * dx + dy * dy < 0.03F) frame.set(x, y, {20, 20, 20});
        }
    }
    return frame;
}

template <class Function> void onion_skin(Run &run, Export<Function> skin) {
    Image &picture = run.draw_on(run.photo.width, run.photo.height, {255, 255, 255});
    std::array<Image, 6> frames;
    for (int32_t number = 0; number < 6; ++number)
        frames[static_cast<std::size_t>(number)] = frame_with_disc(run.photo, number);
    std::array<const uint8_t *, 18> planes{};
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const Plane &plane = i % 3 == 0 ? frames[i / 3].red : (i % 3 == 1 ? frames[i / 3].green : frames[i / 3].blue);
        planes[i] = plane.data();
        run.label("frame " + std::to_string(i / 3 + 1), plane);
    }
    std::apply(
        [&](auto... plane) {
            run.call(skin, run.photo.width, run.photo.height, 0.1F, 0.15F, 0.25F, 0.25F, 0.15F, 0.1F, plane...,
                     picture.red.data(), picture.green.data(), picture.blue.data());
        },
        planes);
}

void swap_block(Run &run) {
    Image &picture = run.picture;
    const int32_t width = picture.width / 3;
    const int32_t height = picture.height / 3;
    Plane block(static_cast<std::size_t>(width * height));
    run.label("block", block);
    // Takes a block out, puts it where another is, and that one where the first was.
    for (uint8_t *plane : picture.planes()) {
        run.call(EXPORT(xSwapBlit), picture.width, picture.height, -width, height, width, height, plane, block.data());
        run.call(EXPORT(xSwapBlit), picture.width, picture.height, 2 * width, height, width, height, plane,
                 block.data());
        run.call(EXPORT(xSwapBlit), picture.width, picture.height, 0, height, width, height, plane, block.data());
    }
}

void fixed_aspect(Run &run) {
    const Image &photo = run.photo;
    // A square frame, the photo fitted into it.
    const int32_t side = std::max(photo.width, photo.height) * 3 / 4;
    Image &picture = run.draw_on(side, side, {40, 70, 90});
    const float scale = static_cast<float>(side) / static_cast<float>(std::max(photo.width, photo.height));
    const auto margin = [=](int32_t length) {
        return (side - static_cast<int32_t>(static_cast<float>(length) * scale)) / 2;
    };
    run.call(EXPORT(FixedAspectBlit), photo.width, photo.height, side, side, margin(photo.width), margin(photo.height),
             scale, 40, 70, 90, picture.red.data(), picture.green.data(), picture.blue.data(), photo.red.data(),
             photo.green.data(), photo.blue.data());
}

struct Accumulators {
    std::vector<int16_t> red;
    std::vector<int16_t> green;
    std::vector<int16_t> blue;

    Accumulators(Run &run, std::size_t count) : red(count), green(count), blue(count) {
        run.label("sums.red", red);
        run.label("sums.green", green);
        run.label("sums.blue", blue);
    }

    void finish(Run &run, int32_t divisor) const {
        Image &picture = run.picture;
        run.call(EXPORT(xAccumulate_finish), divisor, picture.width, picture.height, red.data(), green.data(),
                 blue.data(), picture.red.data(), picture.green.data(), picture.blue.data());
    }
};

// The photo moved to the right, its first column repeated.
Image moved(const Image &photo, int32_t columns) {
    Image frame = photo;
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < photo.width; ++x) {
            const std::size_t from = photo.index(std::max(x - columns, 0), y);
            frame.set(x, y, {photo.red[from], photo.green[from], photo.blue[from]});
        }
    }
    return frame;
}

void accumulate(Run &run) {
    constexpr int32_t frames = 16;
    Accumulators sums(run, run.photo.red.size());
    for (int32_t number = 0; number < frames; ++number) {
        const Image frame = moved(run.photo, number * run.photo.width / 400);
        run.call(EXPORT(xAccumulate), frame.width, frame.height, frame.red.data(), frame.green.data(),
                 frame.blue.data(), sums.red.data(), sums.green.data(), sums.blue.data());
    }
    sums.finish(run, frames);
}

void accumulate_weighted(Run &run) {
    Accumulators sums(run, run.photo.red.size());
    int32_t total = 0;
    for (const int32_t weight : {1, 2, 4, 8, 16}) {
        const Image frame = moved(run.photo, (16 - weight) * run.photo.width / 100);
        run.call(EXPORT(xAccumulate3d), frame.width, frame.height, weight, frame.red.data(), frame.green.data(),
                 frame.blue.data(), sums.red.data(), sums.green.data(), sums.blue.data());
        total += weight;
    }
    sums.finish(run, total);
}

// The photo fades in eight directions; a line leads from each first point to its second.
void fades(Run &run) {
    constexpr int32_t gap = 8;
    const Image small = shrunk_to_fit(run.photo, run.photo.width / 3, run.photo.height / 3);
    const Plane mask(small.red.size(), 255);
    run.label("small.red", small.red);
    run.label("small.green", small.green);
    run.label("small.blue", small.blue);
    run.label("mask", mask);
    Image panel = small;
    Image &picture = run.draw_on(3 * small.width + 4 * gap, 3 * small.height + 4 * gap, {30, 30, 34});
    const int32_t reach = std::min(small.width, small.height) / 3;
    for (const int32_t down : {-1, 0, 1}) {
        for (const int32_t right : {-1, 0, 1}) {
            panel = small;
            const int32_t x = small.width / 2;
            const int32_t y = small.height / 2;
            if (right != 0 || down != 0) {
                run.call(EXPORT(xLinearAlphaFadePreview), small.width, small.height, x - right * reach,
                         y - down * reach, x + right * reach, y + down * reach, small.red.data(), small.green.data(),
                         small.blue.data(), mask.data(), panel.red.data(), panel.green.data(), panel.blue.data());
                const auto at = [&](int32_t end) {
                    return Point{static_cast<float>(x + end * right * reach),
                                 static_cast<float>(y + end * down * reach)};
                };
                draw_line(panel, std::array{at(-1), at(1)}, 3, {255, 210, 60});
                fill(panel, x + right * reach - 4, y + down * reach - 4, 9, 9, {255, 60, 60});
            }
            paste(picture, panel, gap + (right + 1) * (small.width + gap), gap + (down + 1) * (small.height + gap));
        }
    }
}

} // namespace

Family composite_family() {
    return {
        "composite",
        "Previews, blits, onion skins and sums of frames.",
        {
            {"matte_preview",
             "Matte preview",
             "Lays a red matte over what the mask covers, row by row.",
             {"Matte_preview_helper"},
             matte},
            {"overlay_preview",
             "Overlay preview",
             "Takes the mask out of the green of each display row, row by row.",
             {"alpha_overlay_helper"},
             overlay_preview},
            {"onion_skin",
             "Onion skin",
             "Six weighted frames of a moving disc on white paper: the first three shine red, the last three blue.",
             {"UnionSkin"},
             [](Run &run) { onion_skin(run, EXPORT(UnionSkin)); }},
            {"onion_skin_untinted",
             "Onion skin, untinted",
             "The same six frames without the tint.",
             {"UnionSkin_untinted"},
             [](Run &run) { onion_skin(run, EXPORT(UnionSkin_untinted)); }},
            {"swap_block",
             "Swapped blocks",
             "Exchanges the blocks at the left and right through a buffer.",
             {"xSwapBlit"},
             swap_block},
            {"fixed_aspect", "Fixed aspect", "Fits the photo into a square frame.", {"FixedAspectBlit"}, fixed_aspect},
            {"accumulate",
             "Sum of frames",
             "The mean of sixteen frames that move to the right: motion blur.",
             {"xAccumulate", "xAccumulate_finish"},
             accumulate},
            {"accumulate_weighted",
             "Weighted sum of frames",
             "Five frames that move to the left, each twice the weight of the one before: echoes.",
             {"xAccumulate3d", "xAccumulate_finish"},
             accumulate_weighted},
            {"alpha_fade",
             "Alpha fade in eight directions",
             "Fades the photo over a checkerboard from the yellow line's start to its red end.",
             {"xLinearAlphaFadePreview"},
             fades},
        },
    };
}

} // namespace gallery
