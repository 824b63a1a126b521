#include "tavik/frame/frame.h"

#include <algorithm>
#include <stdexcept>

#include "host/chart.h"
#include "host/run.h"

namespace gallery {
namespace {

void complement_twice(Run &run) {
    Image &picture = run.picture;
    const int32_t upper_half = picture.height / 2;
    const std::size_t middle = picture.index(0, upper_half);
    for (uint8_t *plane : picture.planes()) {
        run.call(EXPORT(TestPPL2), plane, picture.height, picture.width);
        run.call(EXPORT(TestPPL2), plane + middle, picture.height - upper_half, picture.width);
    }
    for (const auto [before, after] : run.channels())
        if (!std::equal(before + middle, before + picture.pixel_count(), after + middle))
            throw std::runtime_error("TestPPL2 applied twice does not restore the photo");
    run.note("The lower half is the photo again, byte for byte.");
}

// A bar for each kind of memory, with what is in use, and one for each size of pictures.
void memory(Run &run) {
    constexpr int32_t width = 1320;
    constexpr int32_t row = 64;
    Image &picture = run.draw_on(width, 8 * row, chart::paper);
    int32_t top = row / 2;
    const auto bar = [&](const std::string &text, double part, Colour colour) {
        draw_text(picture, 40, top, chart::text_size, text, chart::ink);
        fill(picture, 560, top, 700, 24, chart::grid);
        fill(picture, 560, top, static_cast<int32_t>(700 * part), 24, colour);
        top += row;
    };
    std::array<int32_t, 4> kib{};
    run.label("kib", kib);
    run.call(EXPORT(MemoryInfo), &kib[0], &kib[1], &kib[2], &kib[3]);
    const auto in_use = [](int32_t available, int32_t total) {
        return total > 0 ? 1 - double{1} * available / total : 0;
    };
    bar("memory in use", in_use(kib[0], kib[1]), chart::red);
    bar("page file in use", in_use(kib[2], kib[3]), chart::red);
    for (const int32_t side : {1000, 2000, 4000, 8000, 16000}) {
        const int32_t mib = run.call(EXPORT(CalcMem), side, side, 1);
        bar(std::to_string(side) + " x " + std::to_string(side) + ": " + std::to_string(mib) + " MiB", mib / 800.0,
            chart::blue);
    }
}

} // namespace

Family frame_family() {
    return {
        "frame",
        "What every call shares, and memory figures, which stand at the head of this page, too.",
        {
            {"complement_twice",
             "Complement, once and twice",
             "Complements the upper half once and the lower half twice, which restores it.",
             {"TestPPL2"},
             complement_twice},
            {"memory",
             "Memory",
             "This machine's memory while the gallery ran, and what pictures of five sizes take.",
             {"MemoryInfo", "CalcMem"},
             memory},
        },
    };
}

} // namespace gallery
