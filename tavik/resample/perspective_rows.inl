// Indices of the source samples of a run's pixels, −1 outside the sheet.
void sheet_samples(const Sheet &sheet, const PixelRun &run, int32_t *from) {
    const Sheet s = sheet;
    const float py = static_cast<float>(run.y) - s.middle_y;
    for (size_t i = 0; i < run.count; ++i) {
        const float px = static_cast<float>(run.x + static_cast<int32_t>(i)) - s.middle_x;
        const float w = (s.p * px + s.q * py) + s.determinant;
        const float r = 1.0F / w;
        const float u = (s.e * px - s.b * py) * r + s.middle_x;
        const float v = (s.a * py - s.c * px) * r + s.middle_y;
        const bool in_front = s.determinant * w > 0;
        const bool inside = (u >= -0.5F) & (u < s.x_end) & (v >= -0.5F) & (v < s.y_end) & in_front;
        const int32_t index = nearest_index(v, s.height) * s.width + nearest_index(u, s.width);
        from[i] = index | (inside ? 0 : -1);
    }
}
