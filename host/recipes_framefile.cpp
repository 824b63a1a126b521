#include "tavik/framefile/framefile.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/drawing.h"
#include "host/file.h"
#include "host/frame_file.h"
#include "host/frame_target.h"
#include "host/run.h"

namespace gallery {
namespace {

constexpr int32_t frame_count = 6;

// Comes closer to the photo's middle.
Image frame_of(const Image &photo, int32_t width, int32_t height, int32_t number) {
    Image frame(width, height);
    const float part = 1 - 0.14F * static_cast<float>(number);
    const auto place = [&](int32_t at, int32_t count, int32_t of) {
        const float from_middle = (static_cast<float>(at) + 0.5F) / static_cast<float>(count) - 0.5F;
        return std::clamp(static_cast<int32_t>((0.5F + part * from_middle) * static_cast<float>(of)), 0, of - 1);
    };
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const std::size_t i = photo.index(place(x, width, photo.width), place(y, height, photo.height));
            frame.set(x, y, {photo.red[i], photo.green[i], photo.blue[i]});
        }
    }
    return frame;
}

// A file of frames, open while this lives.
class OpenFrames {
  public:
    OpenFrames(Run &run, int32_t width, int32_t height)
        : run_(run), file_(run.folder, bytes(run.photo, width, height)), path_(file_.path.string()) {
        run.label("path", path_);
        run.label("header", std::span(&header, 1));
        stream = run.call(EXPORT(kvf_open), path_.c_str(), &header);
        if (stream == nullptr) throw std::runtime_error(path_ + ": cannot be opened");
        run.note(std::to_string(header.frame_count) + " frames of " + std::to_string(header.x_max + 1) + " × " +
                 std::to_string(header.y_max + 1) + " pixels");
    }
    ~OpenFrames() { run_.call(EXPORT(kvf_close), stream); }
    OpenFrames(const OpenFrames &) = delete;
    OpenFrames &operator=(const OpenFrames &) = delete;

    tavik_frame_header header{};
    FILE *stream;

  private:
    static std::vector<char> bytes(const Image &photo, int32_t width, int32_t height) {
        std::vector<Image> images(frame_count);
        for (int32_t number = 0; Image & image : images) image = frame_of(photo, width, height, number++);
        std::vector<FramePlanes> frames(images.size());
        std::ranges::transform(images, frames.begin(), [](const Image &image) { return image.planes(); });
        return bytes_of_frame_file(width, height, frames);
    }

    Run &run_;
    TemporaryFile file_;
    std::string path_;
};

void film_strip(Run &run) {
    constexpr int32_t width = 180;
    constexpr int32_t height = 120;
    // A row of the strip holds three frames, narrowed, between two rows of holes.
    constexpr int32_t shown = 150;
    constexpr int32_t gap = 10;
    constexpr int32_t hole = 8;
    constexpr int32_t strip = height + 4 * gap;
    constexpr int32_t per_row = 3;
    Image &picture = run.draw_on(per_row * (shown + gap) + gap, frame_count / per_row * strip, {24, 22, 20});
    const OpenFrames frames(run, width, height);
    Image frame(width, height);
    run.label("frame.red", frame.red);
    run.label("frame.green", frame.green);
    run.label("frame.blue", frame.blue);
    for (int32_t number = 0; number < frame_count; ++number) {
        run.call(EXPORT(kvf_getframe), frames.stream, &frames.header, number, frame.red.data(), frame.green.data(),
                 frame.blue.data());
        const int32_t left = gap + number % per_row * (shown + gap);
        const int32_t top = number / per_row * strip;
        const auto from = frame.planes();
        const auto to = picture.planes();
        for (std::size_t channel = 0; channel < 3; ++channel)
            for (int32_t y = 0; y < height; ++y)
                run.call(EXPORT(FilmstripHelper), static_cast<float>(width) / shown, left, left + shown - 1,
                         from[channel] + frame.index(0, y), to[channel] + picture.index(0, top + 2 * gap + y));
        for (int32_t x = left; x + hole <= left + shown + gap; x += 2 * hole)
            for (const int32_t y : {top + gap / 2, top + strip - gap / 2 - hole})
                fill(picture, x, y, hole, hole, {228, 226, 220});
    }
}

// Takes bitmap pixels over.
void show(Image &picture, const uint32_t *pixels) {
    for (std::size_t i = 0; i < picture.red.size(); ++i) {
        picture.red[i] = static_cast<uint8_t>(pixels[i] >> 16);
        picture.green[i] = static_cast<uint8_t>(pixels[i] >> 8);
        picture.blue[i] = static_cast<uint8_t>(pixels[i]);
    }
}

void scaled_frames(Run &run) {
    constexpr int32_t width = 600;
    constexpr int32_t height = 400;
    FrameTarget target(width, height);
    const OpenFrames frames(run, 150, 100);
    for (int32_t number = 0; number < frame_count; ++number)
        run.call(EXPORT(kvf_getframetoHDC_scaled), frames.stream, &frames.header, number, target.handle(),
                 width - number * width / frame_count, height - number * height / frame_count);
    show(run.draw_on(width, height, {0, 0, 0}), target.pixels());
}

void thumbnails(Run &run) {
    const Image &photo = run.photo;
    constexpr int32_t largest = 240;
    Image &picture = run.draw_on(2 * largest + 30, 4 * largest / 3, {235, 233, 228});
    int32_t top = 10;
    for (const int32_t width : {largest, largest / 2, largest / 4}) {
        const int32_t height = width * 2 / 3;
        Image thumbnail(width, height);

        std::vector<uint32_t> bitmap(thumbnail.red.size());
        run.label("bitmap", bitmap);
        run.call(EXPORT(p_scale_to_dib), photo.red.data(), photo.green.data(), photo.blue.data(), bitmap.data(),
                 photo.width, photo.height, width, height, width);
        show(thumbnail, bitmap.data());
        paste(picture, thumbnail, 10, top);

        std::array<std::vector<uint8_t>, 3> scratch;
        for (auto &plane : scratch) plane.resize(std::size_t{2} * (2 * width + 1) * height);
        std::vector<uint8_t> pixels(static_cast<std::size_t>(3 * (width + 1) * height));
        run.label("scratch", scratch[0]);
        run.label("pixels", pixels);
        run.call(EXPORT(SuperThumb), photo.red.data(), photo.green.data(), photo.blue.data(), scratch[0].data(),
                 scratch[1].data(), scratch[2].data(), pixels.data(), photo.x_max(), photo.y_max(), width, height);
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) {
                const uint8_t *pixel = &pixels[std::size_t{3} * ((width + 1) * y + x)];
                thumbnail.set(x, y, {pixel[2], pixel[1], pixel[0]});
            }
        }
        paste(picture, thumbnail, largest + 20, top);
        top += height + 10;
    }
}

void unpacked_bitmap(Run &run) {
    const Image &photo = run.photo;
    const int32_t width = photo.x_max();
    std::vector<uint8_t> bitmap;
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const std::size_t i = photo.index(x, y);
            bitmap.insert(bitmap.end(), {photo.blue[i], photo.green[i], photo.red[i]});
        }
    }
    run.label("bitmap", bitmap);
    Image &picture = run.draw_on(photo.width, photo.height, {0, 0, 0});
    run.call(EXPORT(AVI_extract), width, photo.height, static_cast<int32_t>(bitmap.size()), picture.red.data(),
             picture.green.data(), picture.blue.data(), bitmap.data());
}

// Each row of a photo of few tones is encoded; its runs are drawn the brighter the longer.
void run_lengths(Run &run) {
    const Image &photo = run.photo;
    std::vector<uint8_t> row(static_cast<std::size_t>(photo.width));
    std::vector<uint8_t> encoded(row.size());
    int32_t length = 0;
    run.label("row", row);
    run.label("encoded", encoded);
    run.label("length", std::span(&length, 1));
    Image &picture = run.draw_on(photo.width, photo.height, {60, 20, 20});
    std::size_t bytes = 0;
    int32_t too_long = 0;
    for (int32_t y = 0; y < photo.height; ++y) {
        std::transform(photo.green.begin() + static_cast<std::ptrdiff_t>(photo.index(0, y)),
                       photo.green.begin() + static_cast<std::ptrdiff_t>(photo.index(0, y)) + photo.width, row.begin(),
                       [](uint8_t sample) { return static_cast<uint8_t>(sample & 0xC0); });
        length = photo.width;
        too_long += run.call(EXPORT(xRLE_Encode_byte), row.data(), encoded.data(), &length);
        bytes += static_cast<std::size_t>(length);
        int32_t x = 0;
        for (std::size_t pair = 0; pair + 1 < static_cast<std::size_t>(length); pair += 2) {
            const auto light = static_cast<uint8_t>(std::min(60 + 3 * encoded[pair], 255));
            const auto tone = static_cast<uint8_t>(encoded[pair + 1] / 2 + light / 2);
            fill(picture, x, y, encoded[pair], 1, {light, light, tone});
            x += encoded[pair];
        }
    }
    run.note(std::to_string(row.size() * static_cast<std::size_t>(photo.height)) + " bytes became " +
             std::to_string(bytes) + "; " + std::to_string(too_long) + " rows would have grown.");
}

} // namespace

Family framefile_family() {
    return {
        "framefile",
        "Frame files and thumbnails: animations read frame by frame, small pictures, packed bytes.",
        {
            {"film_strip",
             "Film strip",
             "A frame file written by the gallery, read back frame by frame, each row narrowed to its place.",
             {"kvf_open", "kvf_getframe", "FilmstripHelper", "kvf_close"},
             film_strip},
            {"scaled_frames",
             "Scaled frames",
             "Frames of 150 × 100, each drawn smaller than the one before it into the same corner.",
             {"kvf_open", "kvf_getframetoHDC_scaled", "kvf_close"},
             scaled_frames},
            {"thumbnails",
             "Thumbnails",
             "The nearest samples on the left; filtered in two stages on the right.",
             {"p_scale_to_dib", "SuperThumb"},
             thumbnails},
            {"unpacked_bitmap",
             "Upside down",
             "A 24-bit bitmap whose rows go down, unpacked as those that go up are. The last column lies outside it.",
             {"AVI_extract"},
             unpacked_bitmap},
            {"run_lengths",
             "Run lengths",
             "Rows of four tones, encoded as runs: the brighter, the longer.",
             {"xRLE_Encode_byte"},
             run_lengths},
        }};
}

} // namespace gallery
