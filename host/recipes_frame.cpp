#include "tavik/frame/frame.h"

#include <algorithm>
#include <stdexcept>

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

} // namespace

Family frame_family() {
    return {
        "frame",
        "What every call shares, and memory figures, which stand at the head of this page.",
        {
            {"complement_twice",
             "Complement, once and twice",
             "Complements the upper half once and the lower half twice, which restores it.",
             {"TestPPL2"},
             complement_twice},
        },
    };
}

} // namespace gallery
