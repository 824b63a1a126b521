void find_columns(int32_t first, float step, int32_t last, SourceColumns &columns, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const Between column = between(first + static_cast<int32_t>(i), step, last);
        columns.left[i] = column.first;
        columns.right[i] = column.second;
        columns.part[i] = column.part;
    }
}

// A run of columns of one row, between the source rows above and below it.
void resample_run(const uint8_t *above, const uint8_t *below, const SourceColumns &columns, float part_y, uint8_t *dst,
                  size_t count) {
    struct Corners {
        uint8_t left[run_columns];
        uint8_t right[run_columns];
    };
    const auto gather = [&](const uint8_t *row, Corners &corners) {
        for (size_t i = 0; i < count; ++i) {
            corners.left[i] = row[columns.left[i]];
            corners.right[i] = row[columns.right[i]];
        }
    };
    Corners top;
    Corners bottom;
    gather(above, top);
    gather(below, bottom);
    for (size_t i = 0; i < count; ++i) {
        const float part_x = columns.part[i];
        const auto across = [&](const Corners &corners) {
            return static_cast<float>(corners.left[i]) * (1 - part_x) + static_cast<float>(corners.right[i]) * part_x;
        };
        dst[i] = low_byte(static_cast<int32_t>(across(top) * (1 - part_y) + across(bottom) * part_y));
    }
}

// Each number is the mean of 2 × 2 samples, rounded down.
void halve_run(const uint8_t *above, const uint8_t *below, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i)
        dst[i] = low_byte((above[2 * i] + above[2 * i + 1] + below[2 * i] + below[2 * i + 1]) >> 2);
}

// Planes to pixels of three bytes.
void pack_pixels(const uint8_t *blue, const uint8_t *green, const uint8_t *red, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        dst[3 * i] = blue[i];
        dst[3 * i + 1] = green[i];
        dst[3 * i + 2] = red[i];
    }
}
