#include "tavik/convert/convert.h"

#include "host/run.h"

namespace gallery {
namespace {

// The bitmap is wider than the photo, filled with a colour first; both conversions leave out the last column.
void exchanged_channels(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    const int32_t stride = photo.width + 8;
    std::vector<uint32_t> bitmap(static_cast<std::size_t>(stride * photo.height));
    run.label("bitmap", bitmap);
    run.call(EXPORT(xFillBuff), stride, photo.height, 0x00404040, bitmap.data());
    run.call(EXPORT(RGB_to_bbytes), photo.x_max(), photo.height, stride, 0, photo.red.data(), photo.green.data(),
             photo.blue.data(), bitmap.data());
    run.call(EXPORT(bbytes_to_RGB), photo.x_max(), photo.height, stride, 0, picture.blue.data(), picture.green.data(),
             picture.red.data(), bitmap.data());
}

// The unpacking begins at the second byte, so green, blue and the mean of the three come out as red, green and blue.
void quads_a_byte_late(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    // One byte more, for the last quad that is read.
    std::vector<uint8_t> quads(4 * photo.red.size() + 1);
    run.label("quads", quads);
    run.call(EXPORT(LongRGBV_to_RGB_array), photo.red.data(), photo.green.data(), photo.blue.data(), quads.data(),
             photo.x_max(), photo.y_max());
    run.call(EXPORT(Long_to_RGBV_array), picture.red.data(), picture.green.data(), picture.blue.data(),
             quads.data() + 1, photo.x_max(), photo.y_max());
}

void past_white(Run &run) {
    const int32_t width = run.photo.width;
    const int32_t height = run.photo.height;
    const int32_t upper_half = height / 2;
    const std::size_t middle = run.photo.index(0, upper_half);
    std::vector<float> values(run.photo.red.size());
    run.label("values", values);
    for (const auto [source, target] : run.channels()) {
        run.call(EXPORT(char_to_float), width, height, source, values.data());
        for (float &value : values) value *= 1.75F;
        run.call(EXPORT(float_to_char), width, upper_half, values.data(), target);
        run.call(EXPORT(float_to_char_clamp), width, height - upper_half, values.data() + middle, target + middle);
    }
}

void contours(Run &run) {
    const Image &photo = run.photo;
    std::vector<int32_t> numbers(photo.red.size());
    run.label("numbers", numbers);
    for (const auto [source, target] : run.channels()) {
        run.call(EXPORT(char_to_long), photo.width, photo.height, source, numbers.data());
        for (int32_t &number : numbers) number *= 4;
        run.call(EXPORT(long_to_char), photo.width, photo.height, numbers.data(), target);
    }
}

} // namespace

Family convert_family() {
    return {
        "convert",
        "Pixels between channel planes, bitmaps, packed colours, floats and integers.",
        {
            {"exchanged_channels",
             "Red and blue exchanged",
             "Packs the photo into a bitmap and unpacks it with red and blue in each other's place.",
             {"xFillBuff", "RGB_to_bbytes", "bbytes_to_RGB"},
             exchanged_channels},
            {"quads_a_byte_late",
             "Quads read a byte late",
             "Packs quads of red, green, blue and their mean, and unpacks them from the second byte on.",
             {"LongRGBV_to_RGB_array", "Long_to_RGBV_array"},
             quads_a_byte_late},
            {"past_white",
             "Past white",
             "Brightens float planes past white: the upper half wraps around, the lower half stops.",
             {"char_to_float", "float_to_char", "float_to_char_clamp"},
             past_white},
            {"contours",
             "Contours",
             "Widens to integers, multiplies by four and keeps the low byte: tones become contour lines.",
             {"char_to_long", "long_to_char"},
             contours},
        },
    };
}

} // namespace gallery
