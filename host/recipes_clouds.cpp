#include "tavik/generators/generators.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/drawing.h"
#include "host/run.h"
#include "tavik/convert/convert.h"

namespace gallery {
namespace {

constexpr int32_t frame_width = 420;
constexpr int32_t frame_height = 300;
constexpr int32_t gap = 12;

using Particle = std::array<float, 18>;

// Banks of puffs, white above and grey below, from far to near.
std::vector<float> cloud_banks() {
    uint32_t state = 3;
    // −1 .. 1, most near 0.
    const auto spread = [&] {
        float sum = 0;
        for (int32_t i = 0; i < 3; ++i) {
            state = state * 1664525U + 1013904223U;
            sum += static_cast<float>(state >> 16) / 32768.0F - 1.0F;
        }
        return sum / 3.0F;
    };
    std::vector<Particle> puffs;
    for (int32_t bank = 0; bank < 44; ++bank) {
        const float x = spread() * 900.0F;
        const float depth = 130.0F + 34.0F * static_cast<float>(bank);
        const float z = 30.0F + spread() * 230.0F;
        const float width = 110.0F + 60.0F * spread();
        for (int32_t i = 0; i < 70; ++i) {
            const float across = spread();
            const float up = spread();
            const float shade = std::clamp(205.0F - 90.0F * up, 130.0F, 255.0F);
            Particle puff = {};
            puff[0] = x + across * width;
            puff[1] = depth + spread() * 60.0F;
            puff[2] = z + up * width * 0.35F * (1.2F - std::abs(across));
            puff[3] = width * (0.35F + 0.2F * spread());
            puff[4] = 0.3F;
            puff[8] = shade;
            puff[9] = std::min(shade + 4, 255.0F);
            puff[10] = std::min(shade + 12, 255.0F);
            puffs.push_back(puff);
        }
    }
    std::stable_sort(puffs.begin(), puffs.end(), [](const Particle &a, const Particle &b) { return a[1] > b[1]; });
    std::vector<float> floats;
    for (const Particle &puff : puffs) floats.insert(floats.end(), puff.begin(), puff.end());
    return floats;
}

Image sky() {
    Image frame(frame_width, frame_height);
    for (int32_t y = 0; y < frame_height; ++y) {
        const int32_t low = y * 120 / frame_height;
        for (int32_t x = 0; x < frame_width; ++x)
            frame.set(
                x, y,
                {static_cast<uint8_t>(60 + low), static_cast<uint8_t>(110 + low), static_cast<uint8_t>(190 + low / 2)});
    }
    return frame;
}

// Three frames beside each other; render(frame, particles, camera) draws the cloud into one.
template <class Render> void fly_through(Run &run, const Render &render) {
    const std::vector<float> particles = cloud_banks();
    run.label("particles", particles);
    Image &picture = run.draw_on(3 * frame_width + 4 * gap, frame_height + 2 * gap, {245, 246, 248});
    std::array<float, 5> camera = {0, 0, 0, 10, 20};
    run.label("camera", camera);
    for (int32_t i = 0; i < 3; ++i) {
        camera[1] = 260.0F * static_cast<float>(i);
        Image frame = sky();
        render(frame, particles.data(), camera.data(), static_cast<int32_t>(particles.size() / 18));
        // The last column and row are never painted.
        for (uint8_t *plane : frame.planes()) {
            for (int32_t y = 0; y < frame.height; ++y)
                plane[frame.index(frame.x_max(), y)] = plane[frame.index(frame.x_max() - 1, y)];
            for (int32_t x = 0; x < frame.width; ++x)
                plane[frame.index(x, frame.y_max())] = plane[frame.index(x, frame.y_max() - 1)];
        }
        paste(picture, frame, gap + i * (frame_width + gap), gap);
    }
}

void cloud_flight(Run &run) {
    fly_through(run, [&](Image &frame, const float *particles, const float *camera, int32_t count) {
        run.call(EXPORT(xRenderCloud), particles, camera, count, frame.x_max(), frame.y_max(), frame.red.data(),
                 frame.green.data(), frame.blue.data());
    });
}

void cloud_flight_float(Run &run) {
    fly_through(run, [&](Image &frame, const float *particles, const float *camera, int32_t count) {
        std::array<std::vector<float>, 3> floats;
        const auto planes = frame.planes();
        for (std::size_t i = 0; i < 3; ++i) {
            floats[i].resize(static_cast<std::size_t>(frame.pixel_count()));
            run.call(EXPORT(char_to_float), frame.width, frame.height, planes[i], floats[i].data());
        }
        run.call(EXPORT(xRenderCloud_float), particles, camera, count, frame.x_max(), frame.y_max(), floats[0].data(),
                 floats[1].data(), floats[2].data());
        for (std::size_t i = 0; i < 3; ++i)
            run.call(EXPORT(float_to_char_clamp), frame.width, frame.height, floats[i].data(), planes[i]);
    });
}

} // namespace

Family clouds_family() {
    return {"clouds",
            "Clouds of soft round puffs in space, seen by a camera that flies through.",
            {
                {"cloud_flight",
                 "Flight through clouds",
                 "Three frames, 260 units apart. Puffs that come near grow without end and vanish behind the camera.",
                 {"xRenderCloud"},
                 cloud_flight},
                {"cloud_flight_float",
                 "Flight, fading",
                 "The same flight in float planes, where puffs fade out before the camera reaches them.",
                 {"char_to_float", "xRenderCloud_float", "float_to_char_clamp"},
                 cloud_flight_float},
            }};
}

} // namespace gallery
