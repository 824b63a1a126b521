#include "tavik/tone/tone.h"

#include <algorithm>

#include "host/run.h"
#include "tavik/convert/convert.h"

namespace gallery {
namespace {

using Table = std::array<uint8_t, 256>;

template <class Curve> Table table_of(Curve curve) {
    Table table{};
    for (std::size_t value = 0; value < table.size(); ++value)
        table[value] = static_cast<uint8_t>(curve(static_cast<int32_t>(value)));
    return table;
}

// From the first level over the second at the middle to the third.
Table gradient(int32_t dark, int32_t middle, int32_t light) {
    return table_of([=](int32_t value) {
        return value < 128 ? dark + (middle - dark) * value / 128 : middle + (light - middle) * (value - 128) / 127;
    });
}

void duotone(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    run.call(EXPORT(FastGreyscaleExpose), photo.red.data(), photo.green.data(), photo.blue.data(), photo.width,
             photo.height, picture.red.data(), picture.green.data(), picture.blue.data(), 80, 60, 200);
    const Table red = gradient(18, 214, 255);
    const Table green = gradient(22, 84, 244);
    const Table blue = gradient(72, 92, 214);
    run.label("red_table", red);
    run.label("green_table", green);
    run.label("blue_table", blue);
    run.call(EXPORT(MapLut), picture.x_max(), picture.y_max(), picture.red.data(), picture.red.data(),
             picture.green.data(), picture.blue.data(), red.data(), green.data(), blue.data());
}

using Histogram = std::span<const int32_t, 256>;

// Bars of one channel over the foot of the picture.
void draw_histogram(const Image &picture, Histogram counts, uint8_t *plane) {
    constexpr uint8_t bar = 235;
    const int32_t tallest = picture.height / 4;
    // Four times the mean count reaches the top; a few tones that hold most of the picture do not flatten the rest.
    const int64_t most = std::max(picture.pixel_count() / 64, 1);
    for (int32_t x = 0; x < picture.width; ++x) {
        const int64_t count = counts[static_cast<std::size_t>(int64_t{x} * 256 / picture.width)];
        const auto height = static_cast<int32_t>(std::min(count * tallest / most, int64_t{tallest}));
        for (int32_t y = picture.height - height; y < picture.height; ++y) plane[picture.index(x, y)] = bar;
    }
}

void darken_foot(Image &picture) {
    for (uint8_t *plane : picture.planes())
        for (int32_t i = picture.width * (picture.height * 7 / 10); i < picture.pixel_count(); ++i) plane[i] /= 4;
}

void table_curve(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    // 3t² − 2t³
    const Table curve = table_of([](int32_t value) { return value * value * (3 * 255 - 2 * value) / (255 * 255); });
    std::array<int32_t, 3 * 256> counts{};
    run.label("table", curve);
    run.label("histograms", counts);
    run.call(EXPORT(NewSetValue), photo.red.data(), photo.green.data(), photo.blue.data(), picture.red.data(),
             picture.green.data(), picture.blue.data(), curve.data(), counts.data(), photo.width, photo.height);
    darken_foot(picture);
    for (std::size_t channel = 0; channel < 3; ++channel)
        draw_histogram(picture, std::span(counts).subspan(256 * channel).first<256>(), picture.planes()[channel]);
}

void solarise(Run &run) {
    const Table table = table_of([](int32_t value) { return value < 128 ? 2 * value : 2 * (255 - value); });
    run.label("table", table);
    for (const auto [source, target] : run.channels())
        run.call(EXPORT(ValueLut), run.photo.width, run.photo.height, source, target, table.data());
}

void weighted_grey(Run &run) {
    const Image &photo = run.photo;
    run.call(EXPORT(FastGreyscaleExpose), photo.red.data(), photo.green.data(), photo.blue.data(), photo.width,
             photo.height, run.picture.red.data(), run.picture.green.data(), run.picture.blue.data(), 30, 120, 255);
}

void posterise(Run &run) {
    Image &picture = run.picture;
    run.call(EXPORT(FastPosterize_ppl), picture.red.data(), picture.green.data(), picture.blue.data(), picture.width,
             picture.height, run.photo.red.data(), run.photo.green.data(), run.photo.blue.data(), 50);
}

void grade(Run &run) {
    constexpr std::array<float, 3> gammas = {0.8F, 1.0F, 1.35F};
    const auto channels = run.channels();
    for (std::size_t i = 0; i < channels.size(); ++i)
        run.call(EXPORT(xGammaAB), gammas[i], 1.05F, 0.02F, run.photo.width, run.photo.height, channels[i].photo,
                 channels[i].picture);
}

void invert_value(Run &run) {
    Image &picture = run.picture;
    run.call(EXPORT(xInvertValue), picture.width, picture.height, picture.red.data(), picture.green.data(),
             picture.blue.data());
}

void value_cancelation(Run &run) {
    Image &picture = run.picture;
    run.call(EXPORT(xValueCancelation), picture.width, picture.height, picture.red.data(), picture.green.data(),
             picture.blue.data());
    for (uint8_t *plane : picture.planes())
        run.call(EXPORT(ChannelValue1_mmx), plane, picture.x_max(), picture.y_max(), 2.0F);
}

void warm_light(Run &run) {
    Image &picture = run.picture;
    run.call(EXPORT(FastChannelAdd), picture.red.data(), picture.width, picture.height, 36);
    run.call(EXPORT(FastChannelAdd), picture.green.data(), picture.width, picture.height, 10);
    run.call(EXPORT(FastChannelAdd), picture.blue.data(), picture.width, picture.height, -24);
}

} // namespace

Family tone_family() {
    return {
        "tone",
        "Levels, tables, gamma, contrast, inversion and brightness: every sample on its own.",
        {
            {"levels",
             "Levels",
             "Stretches the tones between 30 and 200 over the whole range.",
             {"AdjustLevels_channel_ppl"},
             [](Run &run) {
                 for (const auto [source, target] : run.channels())
                     run.call(EXPORT(AdjustLevels_channel_ppl), source, target, run.photo.width, run.photo.height, 0,
                              255, 30, 200);
             }},
            {"posterise",
             "Posterise",
             "Reduces each channel to the multiples of 50.",
             {"FastPosterize_ppl"},
             posterise},
            {"gamma",
             "Gamma",
             "Lifts the shadows with the fast power of 0.55.",
             {"xGamma"},
             [](Run &run) {
                 for (uint8_t *plane : run.picture.planes())
                     run.call(EXPORT(xGamma), run.picture.x_max(), run.picture.y_max(), 0.55F, plane);
             }},
            {"grade",
             "Colour grade",
             "Gives each channel its own gamma curve, with a little gain and offset.",
             {"xGammaAB"},
             grade},
            {"contrast",
             "Contrast",
             "Moves every sample away from the middle grey by half as much again.",
             {"xcontrast"},
             [](Run &run) {
                 for (uint8_t *plane : run.picture.planes())
                     run.call(EXPORT(xcontrast), run.picture.x_max(), run.picture.y_max(), 1.5F, plane);
             }},
            {"invert",
             "Invert",
             "Replaces every sample by its complement.",
             {"xInvert"},
             [](Run &run) {
                 for (uint8_t *plane : run.picture.planes())
                     run.call(EXPORT(xInvert), run.picture.x_max(), run.picture.y_max(), plane);
             }},
            {"invert_value",
             "Invert the value",
             "Flips the lightness and keeps the differences between the channels.",
             {"xInvertValue"},
             invert_value},
            {"value_cancelation",
             "Value cancelation",
             "Takes the mean of the channels away, then doubles the colour that is left.",
             {"xValueCancelation", "ChannelValue1_mmx"},
             value_cancelation},
            {"duotone",
             "Duotone",
             "Mixes a grey plane and maps it through three tables, from ink over coral to cream.",
             {"FastGreyscaleExpose", "MapLut"},
             duotone},
            {"weighted_grey",
             "Weighted grey",
             "Mixes a grey of red and some green, as film behind an orange filter sees it.",
             {"FastGreyscaleExpose"},
             weighted_grey},
            {"dim",
             "Dim",
             "Multiplies every sample by 0.5.",
             {"xDimChannel"},
             [](Run &run) {
                 for (uint8_t *plane : run.picture.planes())
                     run.call(EXPORT(xDimChannel), 0.5F, run.picture.pixel_count(), plane);
             }},
            {"brighten",
             "Brighten",
             "Multiplies every sample by 1.6 and stops at white.",
             {"ChannelValue1_mmx"},
             [](Run &run) {
                 for (uint8_t *plane : run.picture.planes())
                     run.call(EXPORT(ChannelValue1_mmx), plane, run.picture.x_max(), run.picture.y_max(), 1.6F);
             }},
            {"warm_light", "Warm light", "Adds to red and green and takes from blue.", {"FastChannelAdd"}, warm_light},
            {"solarise",
             "Solarise",
             "Maps each channel through a tent-shaped table: bright tones fall back into the dark.",
             {"ValueLut"},
             solarise},
            {"table_curve",
             "Table curve with histogram",
             "Maps the photo through an S-curve and counts the results, drawn at its foot.",
             {"NewSetValue"},
             table_curve},
        },
    };
}

} // namespace gallery
