#include "host/space.h"

#include <algorithm>

namespace gallery {
namespace {

constexpr float infinitely_far = 1e9F;

} // namespace

Matrix view_from(const ViewPoint &p) {
    using Axis = std::array<float, 3>;
    const Axis right = {p.turn_cosine, p.turn_sine, 0};
    const Axis up = {p.tilt_sine * p.turn_sine, -p.tilt_sine * p.turn_cosine, p.tilt_cosine};
    const Axis forward = {p.tilt_cosine * p.turn_sine, -p.tilt_cosine * p.turn_cosine, -p.tilt_sine};
    const float near = p.distance * 0.2F;
    const float far = p.distance * 3;
    const float scale = (far + near) / (far - near);
    Matrix m = {};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        m[4 * axis] = right[axis] * p.zoom;
        m[4 * axis + 1] = up[axis] * p.zoom * p.aspect;
        m[4 * axis + 2] = forward[axis] * scale;
        m[4 * axis + 3] = forward[axis];
    }
    m[14] = p.distance * scale - 2 * far * near / (far - near);
    m[15] = p.distance;
    return m;
}

Canvas::Canvas(Image &target) : image(target), depth(static_cast<std::size_t>(target.pixel_count()), infinitely_far) {}

tavik_triangle Canvas::triangle() {
    tavik_triangle t = {};
    t.x_limit = image.x_max();
    t.y_limit = image.height;
    t.plane_r = image.red.data();
    t.plane_g = image.green.data();
    t.plane_b = image.blue.data();
    t.depth = depth.data();
    return t;
}

Image Canvas::picture_of_depth() const {
    float nearest = infinitely_far;
    float farthest = -infinitely_far;
    for (const float z : depth) {
        if (z >= infinitely_far) continue;
        nearest = std::min(nearest, z);
        farthest = std::max(farthest, z);
    }
    Image grey(image.width, image.height);
    for (std::size_t i = 0; i < depth.size(); ++i) {
        const float share = (farthest - depth[i]) / (farthest - nearest);
        grey.red[i] = static_cast<uint8_t>(std::clamp(share * 255.0F, 0.0F, 255.0F));
    }
    grey.green = grey.blue = grey.red;
    return grey;
}

} // namespace gallery
