void shade(const Attribute &attribute, const float *second, const float *third, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = round_to_byte(attribute(second[i], third[i]));
}

void project(const Attribute &q, const Attribute &u_q, const Attribute &v_q, const float *second, const float *third,
             float *w, float *u, float *v, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const float distance = 1.0F / q(second[i], third[i]);
        w[i] = distance;
        u[i] = u_q(second[i], third[i]) * distance;
        v[i] = v_q(second[i], third[i]) * distance;
    }
}
