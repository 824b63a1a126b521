// Calls of every export that works on whole buffers, with buffers exactly as large as the call may touch and parameters
// inside the preconditions. A family lists its calls once, as a BulkFamily; the tests of bulk_tests.cpp, the load test
// and the fuzzer run them.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <vector>

#include "tests/support/guarded_memory.h"
#include "tests/support/numbers.h"
#include "tests/support/planes.h"

namespace tavik_test {

enum class Destinations { of_their_own, in_place };

// Sizes, buffers and parameters of one call. The same calls get the same contents every time.
class Workspace {
  public:
    // `choices` decides the contents and the first parameters; without it, or after it, random numbers do.
    void begin(int32_t width, int32_t height, Placement placement, Destinations destinations,
               std::span<const uint8_t> choices = {});

    int32_t width = 0;
    int32_t height = 0;

    // width × height.
    std::size_t count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }

    // Both, and the last column and row, for a call() of planes.h.
    std::array<int32_t, 2> size() const { return {width, height}; }
    std::array<int32_t, 2> bounds() const { return {width - 1, height - 1}; }

    // A buffer of random contents that the call reads, writes or both: of the picture's size or so many elements. A
    // count below 0 is none, here and below.
    template <class Element = uint8_t> Element *buffer() { return buffer<Element>(count()); }
    template <class Element = uint8_t> Element *buffer(std::size_t elements) {
        return reinterpret_cast<Element *>(place(or_none(elements) * sizeof(Element), false));
    }
    // A buffer that the call writes whole.
    template <class Element = uint8_t> Element *result() { return result<Element>(count()); }
    template <class Element = uint8_t> Element *result(std::size_t elements) {
        return reinterpret_cast<Element *>(place(or_none(elements) * sizeof(Element), true));
    }
    // Three or another number of them.
    template <std::size_t n = 3, class Element = uint8_t> std::array<Element *, n> buffers() {
        return buffers<n, Element>(count());
    }
    template <std::size_t n = 3, class Element = uint8_t> std::array<Element *, n> results() {
        return results<n, Element>(count());
    }
    template <std::size_t n = 3, class Element = uint8_t> std::array<Element *, n> buffers(std::size_t elements) {
        std::array<Element *, n> all;
        for (Element *&one : all) one = buffer<Element>(elements);
        return all;
    }
    template <std::size_t n = 3, class Element = uint8_t> std::array<Element *, n> results(std::size_t elements) {
        std::array<Element *, n> all;
        for (Element *&one : all) one = result<Element>(elements);
        return all;
    }
    // A buffer that the call writes whole, or its source when the call is run in place.
    uint8_t *result_of(uint8_t *source) { return result_of(source, count()); }
    uint8_t *result_of(uint8_t *source, std::size_t elements);
    template <std::size_t n> std::array<uint8_t *, n> results_of(const std::array<uint8_t *, n> &sources) {
        return results_of(sources, count());
    }
    template <std::size_t n>
    std::array<uint8_t *, n> results_of(const std::array<uint8_t *, n> &sources, std::size_t elements) {
        std::array<uint8_t *, n> all;
        for (std::size_t i = 0; i < n; ++i) all[i] = result_of(sources[i], elements);
        return all;
    }

    // Floats low .. high.
    float *floats(std::size_t elements, float low, float high);

    // low .. high, or low where high is below it.
    int32_t integer(int32_t low, int32_t high);
    float real(float low, float high);

    // A float that is no number, or too far away for any picture; and one low .. high that may be such a one.
    float far_or_none();
    float hostile(float low, float high) { return integer(0, 49) < 6 ? far_or_none() : real(low, high); }

    // Everything the call may have changed: all buffers, or the results alone.
    std::vector<uint8_t> contents(bool results_only) const;

  private:
    static std::size_t or_none(std::size_t elements) {
        return static_cast<std::ptrdiff_t>(elements) < 0 ? 0 : elements;
    }
    uint8_t *place(std::size_t bytes, bool is_result);
    uint32_t choice();

    struct Buffer {
        std::span<uint8_t> bytes;
        bool is_result;
    };

    Placement placement_ = Placement::against_the_page_after;
    Destinations destinations_ = Destinations::of_their_own;
    std::span<const uint8_t> choices_;
    std::mt19937 random_;
    std::vector<std::unique_ptr<GuardedMemory>> memory_;
    std::vector<Buffer> buffers_;
};

struct BulkCase {
    const char *name;
    void (*call)(Workspace &w);
    // Whether the call asks for a result_of.
    bool in_place = false;
};

// A family's calls; declaring one adds it to bulk_families. The cases must last as long as the program.
struct BulkFamily {
    BulkFamily(const char *name, std::span<const BulkCase> cases);

    const char *name;
    std::span<const BulkCase> cases;
};

std::span<const BulkFamily> bulk_families();

// Gives each case its test.
void register_bulk_tests();

} // namespace tavik_test
