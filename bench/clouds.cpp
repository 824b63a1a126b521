#include "tavik/generators/generators.h"

#include <vector>

#include "bench/support/cases.h"
#include "bench/support/float_canvas.h"

namespace tavik_bench {
namespace {

// Straight ahead, where a unit of x is a pixel.
constexpr float camera[5] = {0, 0, 0, 10, 1};
constexpr float depth = 200;

// A grid of puffs over a picture, each as wide as their pitch.
std::vector<float> puffs(int32_t width, int32_t height, int32_t pitch) {
    std::vector<float> particles;
    for (int32_t y = pitch / 2; y < height; y += pitch) {
        for (int32_t x = pitch / 2; x < width; x += pitch) {
            const auto screen_x = static_cast<float>(x - width / 2);
            const auto screen_y = static_cast<float>(y - height / 2);
            particles.insert(particles.end(), {screen_x, depth, screen_y, static_cast<float>(pitch), 0.75F, 0, 0, 0,
                                               200, 90.5F, 10, 0, 0, 0, 0, 0, 0, 0});
        }
    }
    return particles;
}

// Puffs are made once for each size of picture.
template <int32_t pitch> const std::vector<float> &puffs_over(int32_t width, int32_t height) {
    static std::vector<float> particles;
    static int32_t made_for = 0;
    if (made_for != width) particles = puffs(width, height, pitch);
    made_for = width;
    return particles;
}

int32_t count_of(const std::vector<float> &particles) { return static_cast<int32_t>(particles.size() / 18); }

template <int32_t pitch> void bytes(const Picture &p) {
    const auto &particles = puffs_over<pitch>(p.width, p.height);
    xRenderCloud(particles.data(), camera, count_of(particles), p.x_max(), p.y_max(), p.to_r, p.to_g, p.to_b);
}

template <int32_t pitch> void floats(const Picture &p) {
    const FloatCanvas canvas(p);
    const auto &particles = puffs_over<pitch>(canvas.side, canvas.side);
    xRenderCloud_float(particles.data(), camera, count_of(particles), canvas.side - 1, canvas.side - 1,
                       canvas.planes[0], canvas.planes[1], canvas.planes[2]);
}

const std::string small = "a puff for each 256 pixels";

const Case cases[] = {
    {"xRenderCloud, 16 pixels", {.bytes = 6, .parallel = true, .note = small}, bytes<16>},
    {"xRenderCloud, 192 pixels", {.bytes = 6, .parallel = true}, bytes<192>},
    {"xRenderCloud_float, 16 pixels",
     {.bytes = 24, .parallel = true, .rows = FloatCanvas::rows, .note = small},
     floats<16>},
    {"xRenderCloud_float, 128 pixels", {.bytes = 24, .parallel = true, .rows = FloatCanvas::rows}, floats<128>},
};

const Family clouds("clouds", cases);

} // namespace
} // namespace tavik_bench
