// One number, or as many as the level's vectors hold. The compiler makes branches of a plain loop with so many choices.
#if TAVIK_LEVEL == TAVIK_SCALAR
constexpr size_t lanes = 1;
using Doubles = double;
inline double whole_part(double value) { return truncate(value); }
inline double counting_from(double first) { return first; }
#else
constexpr size_t lanes = TAVIK_LEVEL >= TAVIK_AVX512 ? 8 : (TAVIK_LEVEL >= TAVIK_AVX2 ? 4 : 2);
using Doubles = double __attribute__((vector_size(lanes * sizeof(double))));
using Longs = int32_t __attribute__((vector_size(lanes * sizeof(int32_t))));
inline Doubles whole_part(Doubles value) {
    return __builtin_convertvector(__builtin_convertvector(value, Longs), Doubles);
}
inline Doubles counting_from(double first) {
    Doubles numbers;
    for (size_t lane = 0; lane < lanes; ++lane) numbers[lane] = first + static_cast<double>(lane);
    return numbers;
}
#endif

inline void store(double *to, const Doubles &value) { std::memcpy(to, &value, sizeof value); }

// Samples first_x .. of a row, up to the next whole vector.
void find_places(int32_t first_x, double frequency, double scale, double y, LatticePlaces &places, size_t count) {
    constexpr double stretch = -0.211324865405187;
    const Doubles zero = {};
    const Doubles one = zero + 1.0;
    const Doubles two = zero + 2.0;
    const auto floor_of = [&](const Doubles &value) {
        const Doubles truncated = whole_part(value);
        return truncated - (truncated > value ? one : zero);
    };
    for (size_t s = 0; s < count; s += lanes) {
        const Doubles x = counting_from(first_x + static_cast<double>(s)) * frequency * scale;
        const Doubles shift = (x + y) * stretch;
        const Doubles stretched_x = x + shift;
        const Doubles stretched_y = y + shift;
        const Doubles base_x = floor_of(stretched_x);
        const Doubles base_y = floor_of(stretched_y);
        const Doubles inside_x = stretched_x - base_x;
        const Doubles inside_y = stretched_y - base_y;
        const Doubles sum = inside_x + inside_y;
        const Doubles squished = (base_x + base_y) * squish;
        store(&places.base_x[s], base_x);
        store(&places.base_y[s], base_y);
        store(&places.dx[s], x - (base_x + squished));
        store(&places.dy[s], y - (base_y + squished));

        // The rhombus has a triangle at its base and one at its far point; the extra point is beside the triangle or
        // across its long side.
        const auto near = sum <= one;
        const auto right = inside_x > inside_y;
        const Doubles rest_near = one - sum;
        const Doubles rest_far = two - sum;
        const auto beside_near = (rest_near > inside_x) | (rest_near > inside_y);
        const auto beside_far = (rest_far < inside_x) | (rest_far < inside_y);
        const Doubles near_x = beside_near ? (right ? one : -one) : one;
        const Doubles near_y = beside_near ? (right ? -one : one) : one;
        const Doubles far_x = beside_far ? (right ? two : zero) : zero;
        const Doubles far_y = beside_far ? (right ? zero : two) : zero;
        store(&places.third_step[s], near ? zero : one);
        store(&places.extra_step_x[s], near ? near_x : far_x);
        store(&places.extra_step_y[s], near ? near_y : far_y);
    }
}

// The lattice coordinates of all points, modulo 256.
void find_points(const double *bases, const double *third_steps, const double *extra_steps, bool along_x,
                 uint8_t *coordinates, size_t count) {
    const auto whole = [](double value) { return static_cast<uint32_t>(static_cast<int32_t>(value)); };
    const uint32_t first_step = along_x ? 1 : 0;
    for (size_t s = 0; s < count; ++s) coordinates[s] = static_cast<uint8_t>(whole(bases[s]) + first_step);
    for (size_t s = 0; s < count; ++s) coordinates[count + s] = static_cast<uint8_t>(whole(bases[s]) + 1 - first_step);
    for (size_t s = 0; s < count; ++s)
        coordinates[2 * count + s] = static_cast<uint8_t>(whole(bases[s]) + whole(third_steps[s]));
    for (size_t s = 0; s < count; ++s)
        coordinates[3 * count + s] = static_cast<uint8_t>(whole(bases[s]) + whole(extra_steps[s]));
}

void add_modulo_256(uint8_t *to, const uint8_t *amounts, size_t count) {
    for (size_t i = 0; i < count; ++i) to[i] = static_cast<uint8_t>(to[i] + amounts[i]);
}

void add_octave(const LatticePlaces &places, const uint8_t *gradients_x, const uint8_t *gradients_y, double weight,
                double *totals, size_t count) {
    for (size_t s = 0; s < count; ++s) {
        const auto contribution = [&](size_t point, double step_x, double step_y) {
            const double shift = (step_x + step_y) * squish;
            const double dx = places.dx[s] - step_x - shift;
            const double dy = places.dy[s] - step_y - shift;
            const double a = 2.0 - dx * dx - dy * dy;
            const double squared = a * a;
            const double gx = static_cast<int8_t>(gradients_x[point * count + s]);
            const double gy = static_cast<int8_t>(gradients_y[point * count + s]);
            const double amount = squared * squared * (gx * dx + gy * dy);
            return a > 0.0 ? amount : 0.0;
        };
        const double third = places.third_step[s];
        const double value = contribution(0, 1.0, 0.0) + contribution(1, 0.0, 1.0) + contribution(2, third, third) +
                             contribution(3, places.extra_step_x[s], places.extra_step_y[s]);
        totals[s] += value * 0.02127659574468085 * weight;
    }
}

void levels_of_totals(const double *totals, uint8_t *dst, size_t count) {
    for (size_t s = 0; s < count; ++s) {
        const double level = (totals[s] + 1.0) * 127.0;
        const double raised = level < 0.0 ? 0.0 : level;
        dst[s] = static_cast<uint8_t>(static_cast<int32_t>(raised < 255.0 ? raised : 255.0));
    }
}
