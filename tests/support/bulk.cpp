#include "tests/support/bulk.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace tavik_test {
namespace {

std::vector<BulkFamily> &families() {
    static std::vector<BulkFamily> all;
    return all;
}

float between(float low, float high, uint32_t drawn) {
    return low + static_cast<float>(drawn >> 8) * 0x1p-24F * (high - low);
}

uint32_t seed_of(std::span<const uint8_t> choices) {
    const std::string_view text(reinterpret_cast<const char *>(choices.data()), choices.size());
    return static_cast<uint32_t>(std::hash<std::string_view>()(text));
}

} // namespace

void Workspace::begin(int32_t new_width, int32_t new_height, Placement placement, Destinations destinations,
                      std::span<const uint8_t> choices) {
    width = new_width;
    height = new_height;
    placement_ = placement;
    destinations_ = destinations;
    choices_ = choices;
    random_.seed(static_cast<uint32_t>(width * 1000 + height) + seed_of(choices));
    buffers_.clear();
}

uint8_t *Workspace::place(std::size_t bytes, bool is_result) {
    if (buffers_.size() == memory_.size()) memory_.emplace_back();
    auto &memory = memory_[buffers_.size()];
    if (!memory || memory->capacity() < bytes)
        memory = std::make_unique<GuardedMemory>(std::max<std::size_t>(bytes, 1));
    uint8_t *start = memory->place(bytes, placement_);
    for (std::size_t i = 0; i < bytes; i += sizeof(uint32_t)) {
        const auto four = static_cast<uint32_t>(random_());
        std::memcpy(start + i, &four, std::min(sizeof four, bytes - i));
    }
    buffers_.push_back({{start, bytes}, is_result});
    return start;
}

uint8_t *Workspace::result_of(uint8_t *source, std::size_t elements) {
    uint8_t *separate = result<uint8_t>(elements);
    if (destinations_ == Destinations::of_their_own) return separate;
    buffers_.back().bytes = {source, or_none(elements)};
    return source;
}

uint32_t Workspace::choice() {
    uint32_t four = 0;
    if (choices_.size() < sizeof four) return static_cast<uint32_t>(random_());
    std::memcpy(&four, choices_.data(), sizeof four);
    choices_ = choices_.subspan(sizeof four);
    return four;
}

float *Workspace::floats(std::size_t elements, float low, float high) {
    auto *values = buffer<float>(elements);
    std::generate(values, values + or_none(elements),
                  [&] { return between(low, high, static_cast<uint32_t>(random_())); });
    return values;
}

int32_t Workspace::integer(int32_t low, int32_t high) {
    if (high <= low) return low;
    const uint32_t values = static_cast<uint32_t>(high) - static_cast<uint32_t>(low) + 1;
    const uint32_t drawn = choice();
    return static_cast<int32_t>(static_cast<uint32_t>(low) + (values == 0 ? drawn : drawn % values));
}

float Workspace::real(float low, float high) { return between(low, high, choice()); }

float Workspace::far_or_none() {
    return std::array{no_number, infinity, -infinity, 1e30F, -1e30F, 1e-30F}[static_cast<std::size_t>(integer(0, 5))];
}

std::vector<uint8_t> Workspace::contents(bool results_only) const {
    std::vector<uint8_t> all;
    for (const Buffer &buffer : buffers_)
        if (buffer.is_result || !results_only) all.insert(all.end(), buffer.bytes.begin(), buffer.bytes.end());
    return all;
}

BulkFamily::BulkFamily(const char *family_name, std::span<const BulkCase> family_cases)
    : name(family_name), cases(family_cases) {
    families().push_back(*this);
}

std::span<const BulkFamily> bulk_families() { return families(); }

} // namespace tavik_test
