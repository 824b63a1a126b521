#include "tests/support/bulk.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "tests/support/vector_level.h"

namespace tavik_test {
namespace {

constexpr std::size_t largest_buffer = std::size_t{4} * 1024 * 1024;

struct Size {
    int32_t width;
    int32_t height;
};

// Around the vector blocks of every level, and one size that is split between threads.
constexpr std::array<Size, 21> sizes = {{{1, 1},  {2, 1},   {3, 2},   {5, 1},   {7, 3},   {8, 2},   {9, 1},
                                         {15, 1}, {16, 2},  {17, 1},  {31, 1},  {33, 3},  {63, 1},  {64, 2},
                                         {65, 1}, {100, 3}, {127, 1}, {129, 2}, {257, 1}, {16, 33}, {501, 403}}};

} // namespace

void Workspace::begin(int32_t new_width, int32_t new_height, Placement placement, Destinations destinations) {
    width = new_width;
    height = new_height;
    placement_ = placement;
    destinations_ = destinations;
    random_.seed(static_cast<uint32_t>(width * 1000 + height));
    buffers_.clear();
}

uint8_t *Workspace::place(std::size_t bytes, bool is_result) {
    if (buffers_.size() == memory_.size()) memory_.push_back(std::make_unique<GuardedMemory>(largest_buffer));
    uint8_t *start = memory_[buffers_.size()]->place(bytes, placement_);
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
    buffers_.back().bytes = {source, elements};
    return source;
}

float *Workspace::floats(std::size_t elements, float low, float high) {
    auto *values = buffer<float>(elements);
    std::generate(values, values + elements, [&] { return real(low, high); });
    return values;
}

int32_t Workspace::integer(int32_t low, int32_t high) {
    return low + static_cast<int32_t>(random_() % static_cast<uint32_t>(high - low + 1));
}

float Workspace::real(float low, float high) {
    return low + static_cast<float>(random_() >> 8) * 0x1p-24F * (high - low);
}

std::vector<uint8_t> Workspace::contents(bool results_only) const {
    std::vector<uint8_t> all;
    for (const Buffer &buffer : buffers_)
        if (buffer.is_result || !results_only) all.insert(all.end(), buffer.bytes.begin(), buffer.bytes.end());
    return all;
}

void PrintTo(const BulkCase &bulk_case, std::ostream *out) { *out << bulk_case.name; }

std::string bulk_name(const testing::TestParamInfo<BulkCase> &info) { return info.param.name; }

TEST_P(BulkExport, SameBytesAtEveryLevelPlacementAndInPlace) {
    static Workspace w;
    const auto run = [&](Size size, Placement placement, Destinations destinations) {
        w.begin(size.width, size.height, placement, destinations);
        GetParam().call(w);
    };
    const auto level_before = set_active_level(supported_levels().front());
    for (const Size size : sizes) {
        set_active_level(supported_levels().front());
        run(size, Placement::against_the_page_after, Destinations::of_their_own);
        const auto expected = w.contents(false);
        const auto expected_results = w.contents(true);
        for (const auto level : supported_levels()) {
            SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " at " << name_of(level));
            set_active_level(level);
            for (const auto placement : {Placement::against_the_page_before, Placement::against_the_page_after}) {
                run(size, placement, Destinations::of_their_own);
                ASSERT_TRUE(w.contents(false) == expected) << "the bytes differ from the plain loop's";
                if (!GetParam().in_place) continue;
                run(size, placement, Destinations::in_place);
                ASSERT_TRUE(w.contents(true) == expected_results) << "in place gives other bytes";
            }
        }
    }
    set_active_level(level_before);
}

} // namespace tavik_test
