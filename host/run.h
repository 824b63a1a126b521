// One run of a recipe: what it starts from, what it makes, and the calls it makes on the way.
#pragma once

#include <array>
#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "host/image.h"
#include "host/library.h"
#include "host/recipe.h"

namespace gallery {

using Clock = std::chrono::steady_clock;

// The values that one argument had over all calls of an export.
class ArgumentValues {
  public:
    void add(const std::string &value);
    std::string text() const;

  private:
    std::vector<std::string> distinct_; // the first few
    std::string last_;
};

// All calls of one export in a run.
struct Calls {
    std::string name;
    int32_t count = 0;
    Clock::duration time{};
    std::vector<ArgumentValues> arguments;

    std::string text() const;
};

// One channel: the photo's plane and the picture's.
struct Channel {
    const uint8_t *photo;
    uint8_t *picture;
};

class Run {
  public:
    Run(const Library &library, const Recipe &recipe, const Image &photo_to_use, std::filesystem::path output_folder);

    const Image &photo;
    // Where the pictures go; a recipe may keep a file there while it runs.
    const std::filesystem::path folder;
    // The result; it begins as a copy of the photo.
    Image picture;
    // A second picture that the recipe combines with the photo.
    std::optional<Image> layer;

    std::array<Channel, 3> channels();

    // Makes the picture an empty one of another size, which has nothing to be compared with.
    Image &draw_on(int32_t width, int32_t height, Colour background);
    bool compares_with_photo() const { return compares_with_photo_; }

    // A fact that the page tells beside the picture.
    void note(std::string fact) { notes_.push_back(std::move(fact)); }
    const std::vector<std::string> &notes() const { return notes_; }

    // Names memory that stays in place until the recipe ends, for the texts of calls with pointers into it.
    template <class Memory> void label(std::string name, const Memory &memory) {
        labels_.push_back({std::move(name), std::as_bytes(std::span(memory))});
    }

    // Calls an export, times it and notes it down: call(EXPORT(xInvert), x_max, y_max, plane).
    template <class Function, class... Arguments>
    std::invoke_result_t<Function *, Arguments...> call(Export<Function> function, Arguments... arguments) {
        auto *address = reinterpret_cast<Function *>(library_.address(function.name));
        const Stopwatch stopwatch(calls_of(function.name, {text(arguments)...}));
        return address(arguments...);
    }
    const std::vector<Calls> &calls() const { return calls_; }

  private:
    class Stopwatch {
      public:
        explicit Stopwatch(Calls &calls) : calls_(calls), start_(Clock::now()) {}
        ~Stopwatch() { calls_.time += Clock::now() - start_; }
        Stopwatch(const Stopwatch &) = delete;
        Stopwatch &operator=(const Stopwatch &) = delete;

      private:
        Calls &calls_;
        Clock::time_point start_;
    };

    struct Label {
        std::string name;
        std::span<const std::byte> memory;
    };

    // Counts a call.
    Calls &calls_of(const std::string &name, const std::vector<std::string> &arguments);
    static std::string text(std::integral auto value) { return std::to_string(value); }
    static std::string text(std::floating_point auto value) { return number_text(static_cast<float>(value)); }
    std::string text(const void *pointer) const;
    static std::string number_text(float value);

    const Library &library_;
    const Recipe &recipe_;
    bool compares_with_photo_ = true;
    std::vector<Label> labels_;
    std::vector<std::string> notes_;
    std::vector<Calls> calls_;
};

// Milliseconds with two decimal places.
std::string text_of(Clock::duration time);

Clock::duration total_time(const std::vector<Calls> &calls);

} // namespace gallery
