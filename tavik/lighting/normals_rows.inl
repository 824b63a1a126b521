#include "tavik/lighting/relief_columns.inl"

void write_normals(const ReliefRows<float> &rows, float scale, float *normals) {
    for_each_column(rows.width, [=](std::ptrdiff_t left, std::ptrdiff_t x, std::ptrdiff_t right) {
        store_vector(normal_of(sobel(rows, left, x, right), scale), normals + 3 * x);
    });
}

void draw_normals(const ReliefRows<uint8_t> &rows, float scale, float sign_y, uint8_t *r, uint8_t *g, uint8_t *b) {
    for_each_column(rows.width, [=](std::ptrdiff_t left, std::ptrdiff_t x, std::ptrdiff_t right) {
        const Vector normal = normal_of(sobel(rows, left, x, right), scale);
        r[x] = round_to_byte(normal.x * 127.5F + 127.5F);
        g[x] = round_to_byte(normal.y * sign_y * 127.5F + 127.5F);
        b[x] = round_to_byte(normal.z * 127.5F + 127.5F);
    });
}
