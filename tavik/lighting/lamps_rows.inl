// Adds the light of one lamp, as GetPointLight gives it for the view (0, 0, 1), at the pixels from column `first` on.
void add_lamp(const Lamp &lamp, int32_t first, float y, float height_scale, const float *heights, const float *normals,
              LitPixels &lit, size_t count) {
    const Lamp l = lamp;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float lx = l.position.x - static_cast<float>(first + static_cast<int32_t>(i));
        const float ly = l.position.y - y;
        const float lz = l.position.z - heights[i] * height_scale;
        const float distance = std::sqrt((lx * lx + ly * ly) + lz * lz);
        const float inverse = 1.0F / distance;
        const float fall = 1.0F / (distance * distance);
        const float x = lx * inverse;
        const float up = ly * inverse;
        const float z = lz * inverse;
        const float nx = normals[3 * i];
        const float ny = normals[3 * i + 1];
        const float nz = normals[3 * i + 2];
        const float kd = clamp((x * nx + up * ny) + z * nz, 0.0F, 1.0F);
        const float hz = z + 1.0F;
        const float half = 1.0F / std::sqrt((x * x + up * up) + hz * hz);
        const float ks = clamp(((x * half) * nx + (up * half) * ny) + (hz * half) * nz, 0.0F, 1.0F);
        const float s = power(ks, l.shininess);
        for (int channel = 0; channel < 3; ++channel) {
            lit.diffuse[channel][i] += ((l.diffuse[channel] * kd) * l.diffuse_intensity) * fall;
            lit.specular[channel][i] += ((l.specular[channel] * s) * l.specular_intensity) * fall;
        }
    }
}

void reflect(const float *diffuse, const float *specular, const uint8_t *src, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i)
        dst[i] = round_to_byte(static_cast<float>(src[i]) * diffuse[i] + specular[i] * 255.0F);
}
