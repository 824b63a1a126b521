#include "tavik/frame/float_lanes.inl"

template <class Float, class Choice>
void draw_pixels(const Stroke &stroke, const tavik_foliage_target &target, int32_t first, int32_t y, Choice inside) {
    const StrokeEnd &from = stroke.from;
    const StrokeEnd &change = stroke.change;
    const Float px = columns_from<Float>(first) - from.x;
    const float py = static_cast<float>(y) - from.y;
    const Float s = clamp((px * change.x + py * change.y) * stroke.per_squared_length, 0.0F, 1.0F);
    const Float qx = px - change.x * s;
    const Float qy = py - change.y * s;
    const Float distance = square_root(qx * qx + qy * qy);
    const Float radius = change.radius * s + from.radius;
    const Float cover = clamp((radius - distance) + 0.5F, 0.0F, 1.0F);

    const size_t index = static_cast<size_t>(y) * static_cast<size_t>(target.width) + static_cast<size_t>(first);
    const Float z = change.depth * s + from.depth;
    const auto before = read_samples<Float>(target.depth + index);
    const auto drawn = inside & (cover > 0.0F) & (z <= before);
    if (!any_lane(drawn)) return;
    write_samples(target.depth + index, select(drawn & (cover >= 0.5F), z, before));

    const Float e = clamp(distance / (radius + 0.5F), 0.0F, 1.0F);
    const Float shade = 1.0F - (e * e) * 0.375F;
    const Float weight = cover * stroke.opacity;
    uint8_t *const planes[] = {target.plane_r, target.plane_g, target.plane_b};
    for (size_t channel = 0; channel < 3; ++channel) {
        uint8_t *samples = planes[channel] + index;
        const auto old = read_samples<Float>(samples);
        const Float colour = (change.colour[channel] * s + from.colour[channel]) * shade;
        const Float mixed = clamp(((colour - old) * weight + old) + 0.5F, 0.0F, 255.0F);
        write_samples(samples, select(drawn, mixed, old));
    }
}

void draw(const Stroke &stroke, const Box &box, const tavik_foliage_target &target) {
    for (int32_t y = box.top; y < box.bottom; ++y) {
        int32_t x = box.left;
#if TAVIK_LEVEL >= TAVIK_SSE2
        if (target.width >= lanes) {
            for (; x < box.right; x += lanes) {
                // The last vector may begin before x, so that it ends inside the row.
                const int32_t first = std::min(x, target.width - lanes);
                const Longs columns = lane_numbers() + first;
                draw_pixels<Floats>(stroke, target, first, y, (columns >= x) & (columns < box.right));
            }
        }
#endif
        for (; x < box.right; ++x) draw_pixels<float>(stroke, target, x, y, true);
    }
}
