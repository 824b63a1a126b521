void shade_normals(const float *normals, const float *light, float scale, uint8_t *dst, size_t count) {
    const float x = light[0];
    const float y = light[1];
    const float z = light[2];
    for (size_t i = 0; i < count; ++i) {
        const float *normal = normals + 3 * i;
        const float brightness = (x * normal[0] + y * normal[1] + z * normal[2]) * scale;
        dst[i] = static_cast<uint8_t>(clamp_to_byte(truncate(brightness)));
    }
}
