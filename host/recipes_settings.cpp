#include <array>
#include <string>
#include <tuple>

#include "host/drawing.h"
#include "host/run.h"
#include "tavik/colour/colour.h"
#include "tavik/tone/tone.h"

namespace gallery {
namespace {

// Four small photos, each made from the first by apply(setting, from, to).
template <class Setting, class Apply> void four_photos(Run &run, const std::array<Setting, 4> &settings, Apply apply) {
    const Image small = shrunk_to_fit(run.photo, 300, 200);
    Image &sheet = run.draw_on(2 * small.width, 2 * small.height, {0, 0, 0});
    Image changed = small;
    for (const auto &[name, from, to] :
         {std::tuple{"red", &small.red, &changed.red}, std::tuple{"green", &small.green, &changed.green},
          std::tuple{"blue", &small.blue, &changed.blue}}) {
        run.label(std::string("small.") + name, *from);
        run.label(std::string("changed.") + name, *to);
    }
    for (std::size_t i = 0; i < settings.size(); ++i) {
        apply(settings[i], small, changed);
        const auto place = static_cast<int32_t>(i);
        paste(sheet, changed, place % 2 * small.width, place / 2 * small.height);
    }
}

void levels_settings(Run &run) {
    four_photos(run, std::array{255, 200, 140, 80}, [&](int32_t white, const Image &from, Image &to) {
        for (std::size_t i = 0; i < 3; ++i)
            run.call(EXPORT(AdjustLevels_channel), from.planes()[i], to.planes()[i], from.x_max(), from.height, 0, 255,
                     0, white);
    });
}

void posterise_settings(Run &run) {
    four_photos(run, std::array{16, 40, 64, 100}, [&](int32_t step, const Image &from, Image &to) {
        run.call(EXPORT(FastPosterize), to.red.data(), to.green.data(), to.blue.data(), to.width, to.height,
                 from.red.data(), from.green.data(), from.blue.data(), step);
    });
}

void dim_settings(Run &run) {
    four_photos(run, std::array{1.0F, 0.75F, 0.5F, 0.25F}, [&](float factor, const Image &from, Image &to) {
        for (std::size_t i = 0; i < 3; ++i)
            run.call(EXPORT(ChannelValue_mmx), to.planes()[i], from.planes()[i], from.x_max(), from.y_max(), factor);
    });
}

// What is saturated away goes to all channels alike, by the weights of brightness.
void matrix_settings(Run &run) {
    std::array<float, 16> matrix{};
    run.label("matrix", matrix);
    four_photos(run, std::array{0.0F, 0.6F, 1.4F, 2.2F}, [&](float saturation, const Image &from, Image &to) {
        constexpr std::array<float, 3> weights = {0.299F, 0.587F, 0.114F};
        for (std::size_t source = 0; source < 3; ++source)
            for (std::size_t target = 0; target < 3; ++target)
                matrix[4 * source + target] =
                    (1 - saturation) * weights[source] + (source == target ? saturation : 0.0F);
        run.call(EXPORT(xColorMatrix), from.x_max(), from.y_max(), from.red.data(), from.green.data(), from.blue.data(),
                 to.red.data(), to.green.data(), to.blue.data(), matrix.data());
    });
}

void colour_negative(Run &run) {
    Image &picture = run.picture;
    for (uint8_t *plane : picture.planes()) run.call(EXPORT(xNegate), picture.width, picture.height, plane);
    run.call(EXPORT(FastChannelAdd), picture.red.data(), picture.width, picture.height, 50);
    run.call(EXPORT(FastChannelAdd), picture.blue.data(), picture.width, picture.height, -50);
}

} // namespace

Family settings_family() {
    return {
        "settings",
        "One call at four settings, for a small photo each, and a negative.",
        {
            {"levels_settings",
             "Levels with white at 255, 200, 140 and 80",
             "Stretches the tones up to four whites over the whole range.",
             {"AdjustLevels_channel"},
             levels_settings},
            {"posterise_settings",
             "Posterised by 16, 40, 64 and 100",
             "Reduces each channel to the multiples of four steps.",
             {"FastPosterize"},
             posterise_settings},
            {"dim_settings",
             "Dimmed to 1, 0.75, 0.5 and 0.25",
             "Scales every sample by four factors.",
             {"ChannelValue_mmx"},
             dim_settings},
            {"matrix_settings",
             "Saturation 0, 0.6, 1.4 and 2.2 by matrix",
             "Multiplies each colour by a matrix that keeps its brightness.",
             {"xColorMatrix"},
             matrix_settings},
            {"colour_negative",
             "Colour negative",
             "Complements every sample and adds the orange of negative film.",
             {"xNegate", "FastChannelAdd"},
             colour_negative},
        },
    };
}

} // namespace gallery
