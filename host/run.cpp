#include "host/run.h"

#include <algorithm>
#include <charconv>
#include <iomanip>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace gallery {
namespace {

// Up to so many values of an argument are listed; of more, the first and the last.
constexpr std::size_t listed_values = 3;

// Where the pointer lies in the memory, if it does.
std::optional<std::size_t> offset_in(std::span<const std::byte> memory, const void *pointer) {
    const auto offset = reinterpret_cast<std::uintptr_t>(pointer) - reinterpret_cast<std::uintptr_t>(memory.data());
    if (offset >= memory.size()) return std::nullopt;
    return offset;
}

} // namespace

void ArgumentValues::add(const std::string &value) {
    last_ = value;
    if (distinct_.size() <= listed_values && std::ranges::find(distinct_, value) == distinct_.end())
        distinct_.push_back(value);
}

std::string ArgumentValues::text() const {
    if (distinct_.size() > listed_values) return distinct_.front() + " … " + last_;
    std::string all;
    for (const std::string &value : distinct_) all += (all.empty() ? "" : " | ") + value;
    return all;
}

std::string Calls::text() const {
    std::string all;
    for (const ArgumentValues &argument : arguments) all += (all.empty() ? "" : ", ") + argument.text();
    return name + "(" + all + ")";
}

Run::Run(const Library &library, const Recipe &recipe, const Image &photo_to_use, std::filesystem::path output_folder)
    : photo(photo_to_use),
      folder(std::move(output_folder)),
      picture(photo_to_use),
      library_(library),
      recipe_(recipe) {}

std::array<Channel, 3> Run::channels() {
    const auto from = photo.planes();
    const auto to = picture.planes();
    return {{{from[0], to[0]}, {from[1], to[1]}, {from[2], to[2]}}};
}

Image &Run::draw_on(int32_t width, int32_t height, Colour background) {
    compares_with_photo_ = false;
    picture = Image(width, height, background);
    return picture;
}

Calls &Run::calls_of(const std::string &name, const std::vector<std::string> &arguments) {
    auto calls = std::ranges::find(calls_, name, &Calls::name);
    if (calls == calls_.end()) {
        // The table's list is what --list shows and what the library is asked for before the first picture.
        if (std::ranges::find(recipe_.exports, name) == recipe_.exports.end())
            throw std::logic_error(std::string("recipe ") + recipe_.name + " calls " + name +
                                   ", which its table entry does not list");
        calls = calls_.insert(calls_.end(), {name, 0, {}, std::vector<ArgumentValues>(arguments.size())});
    }
    ++calls->count;
    for (std::size_t i = 0; i < arguments.size(); ++i) calls->arguments[i].add(arguments[i]);
    return *calls;
}

std::string Run::text(const void *pointer) const {
    const auto find = [&](const std::string &name, const auto &memory) -> std::optional<std::string> {
        const auto offset = offset_in(std::as_bytes(std::span(memory)), pointer);
        if (!offset) return std::nullopt;
        return *offset == 0 ? name : name + " + " + std::to_string(*offset);
    };
    const auto find_plane = [&](const std::string &prefix, const Image &image) {
        auto found = find(prefix + "red", image.red);
        if (!found) found = find(prefix + "green", image.green);
        if (!found) found = find(prefix + "blue", image.blue);
        return found;
    };
    if (const auto name = find_plane("", picture)) return *name;
    if (const auto name = find_plane("photo.", photo)) return *name;
    if (layer) {
        if (const auto name = find_plane("layer.", *layer)) return *name;
    }
    for (const Label &label : labels_) {
        if (const auto name = find(label.name, label.memory)) return *name;
    }
    return "memory";
}

std::string Run::number_text(float value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

std::string text_of(Clock::duration time) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << std::chrono::duration<double, std::milli>(time).count() << " ms";
    return text.str();
}

Clock::duration total_time(const std::vector<Calls> &calls) {
    return std::accumulate(calls.begin(), calls.end(), Clock::duration{},
                           [](Clock::duration sum, const Calls &call) { return sum + call.time; });
}

} // namespace gallery
