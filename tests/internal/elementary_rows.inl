template <class Function> inline void apply(const float *x, float *dst, size_t count, const Function &function) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = function(x[i]);
}

void sines(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return sin_turn(value); });
}
void angles(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return atan2_turn(value, 1.0F - value); });
}
void logarithms(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return log2_of_normal(value); });
}
void exponentials(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return exp2_of_held(value); });
}
void powers(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return power(value, 2.4F); });
}
void floors(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return static_cast<float>(floor_to_int(value)); });
}
void bytes(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return static_cast<float>(round_to_byte(value)); });
}
void hashes(const float *x, float *dst, size_t count) {
    apply(x, dst, count, [](float value) { return unit(hash(static_cast<uint32_t>(truncate(value)))); });
}
