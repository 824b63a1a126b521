// Raises what blocks the ray by the four heights around the point that it has reached.
inline void raise_obstacle(const float *own, const RayCorners &corners, const RayStep &step, float *obstacle,
                           size_t count) {
    const float *a = corners.upper_left;
    const float *b = corners.upper_right;
    const float *c = corners.lower_left;
    const float *d = corners.lower_right;
    for (size_t i = 0; i < count; ++i) {
        const float height = lerp4(a[i], b[i], c[i], d[i], step.part_x, step.part_y);
        const float excess = ((height - own[i]) - step.climb) / step.distance;
        obstacle[i] = excess > obstacle[i] ? excess : obstacle[i];
    }
}

void cast_rays(const HeightField<float> &field, std::span<const RayStep> steps, float hardness, int32_t first,
               int32_t y, uint8_t *dst, int32_t count) {
    float obstacle[shadow_run];
    std::fill_n(obstacle, count, 0.0F);
    for (const RayStep &step : steps) {
        const int32_t upper = y + step.down;
        const int32_t lower = upper + (step.part_y > 0 ? 1 : 0);
        if (upper < 0 || lower >= field.height) continue;
        const int32_t next = step.part_x > 0 ? 1 : 0;
        // The columns whose ray is still over the plane.
        const int32_t begin = std::max(first, -step.right);
        const int32_t end = std::min(first + count, field.width - step.right - next);
        if (begin >= end) continue;
        const float *from_upper = field.row(upper) + (begin + step.right);
        const float *from_lower = field.row(lower) + (begin + step.right);
        raise_obstacle(field.row(y) + begin, {from_upper, from_upper + next, from_lower, from_lower + next}, step,
                       obstacle + (begin - first), static_cast<size_t>(end - begin));
    }
    for (int32_t i = 0; i < count; ++i)
        dst[i] = round_to_byte((1.0F - clamp(obstacle[i] * hardness, 0.0F, 1.0F)) * 255.0F);
}
