// Samples first_x .. of a row.
void find_places(int32_t first_x, double frequency, double scale, double y, LatticePlaces &places, size_t count) {
    constexpr double stretch = -0.211324865405187;
    const auto floored = [](double value) {
        const int32_t truncated = truncate(value);
        return wrap_sub(truncated, static_cast<double>(truncated) > value ? 1 : 0);
    };
    for (size_t s = 0; s < count; ++s) {
        const double x = static_cast<double>(first_x + static_cast<int32_t>(s)) * frequency * scale;
        const double shift = (x + y) * stretch;
        const double stretched_x = x + shift;
        const double stretched_y = y + shift;
        const int32_t column = floored(stretched_x);
        const int32_t row = floored(stretched_y);
        const double base_x = static_cast<double>(column);
        const double base_y = static_cast<double>(row);
        const double inside_x = stretched_x - base_x;
        const double inside_y = stretched_y - base_y;
        const double sum = inside_x + inside_y;
        const double squished = (base_x + base_y) * squish;
        places.dx[s] = x - (base_x + squished);
        places.dy[s] = y - (base_y + squished);

        const bool near = sum <= 1.0;
        const bool right = inside_x > inside_y;
        const double rest_near = 1.0 - sum;
        const double rest_far = 2.0 - sum;
        const bool beside_near = (rest_near > inside_x) | (rest_near > inside_y);
        const bool beside_far = (rest_far < inside_x) | (rest_far < inside_y);
        // Beside the triangle along one axis, or across its long side.
        const double near_x = beside_near ? (right ? 1.0 : -1.0) : 1.0;
        const double near_y = beside_near ? (right ? -1.0 : 1.0) : 1.0;
        const double far_x = (beside_far & right) ? 2.0 : 0.0;
        const double far_y = (beside_far & !right) ? 2.0 : 0.0;
        const double third = near ? 0.0 : 1.0;
        const double extra_x = near ? near_x : far_x;
        const double extra_y = near ? near_y : far_y;
        places.third_step[s] = third;
        places.extra_step_x[s] = extra_x;
        places.extra_step_y[s] = extra_y;
        const auto low = [](int32_t value) { return static_cast<uint8_t>(value); };
        const auto third_int = static_cast<int32_t>(third);
        places.columns[s] = low(wrap_add(column, 1));
        places.columns[count + s] = low(column);
        places.columns[2 * count + s] = low(wrap_add(column, third_int));
        places.columns[3 * count + s] = low(wrap_add(column, static_cast<int32_t>(extra_x)));
        places.rows[s] = low(row);
        places.rows[count + s] = low(wrap_add(row, 1));
        places.rows[2 * count + s] = low(wrap_add(row, third_int));
        places.rows[3 * count + s] = low(wrap_add(row, static_cast<int32_t>(extra_y)));
    }
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
