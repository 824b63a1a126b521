// Property tests that hold for every export that works on whole buffers. A family lists a call of each of its
// bulk exports and instantiates the suite BulkExport with the list; each call is then run on many sizes,
//   - with every buffer, exactly as large as the call may touch, against an inaccessible page on either side,
//   - at every vector level, which must give the bytes of the plain loops,
//   - with destinations that are their own sources, where the export allows that, giving the same bytes again.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <random>
#include <span>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/guarded_memory.h"

namespace tavik_test {

enum class Destinations { of_their_own, in_place };

// Sizes, buffers and parameters of one call. The same calls get the same contents every time.
class Workspace {
  public:
    void begin(int32_t width, int32_t height, Placement placement, Destinations destinations);

    int32_t width = 0;
    int32_t height = 0;

    // width × height.
    std::size_t count() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }

    // A buffer of random contents that the call reads, writes or both.
    template <class Element = uint8_t> Element *buffer(std::size_t elements) {
        return reinterpret_cast<Element *>(place(elements * sizeof(Element), false));
    }
    // A buffer that the call writes whole.
    template <class Element = uint8_t> Element *result(std::size_t elements) {
        return reinterpret_cast<Element *>(place(elements * sizeof(Element), true));
    }
    // A buffer that the call writes whole, or its source when the call is run in place.
    uint8_t *result_of(uint8_t *source, std::size_t elements);

    // Floats low .. high.
    float *floats(std::size_t elements, float low, float high);

    int32_t integer(int32_t low, int32_t high);
    float real(float low, float high);

    // Everything the call may have changed: all buffers, or the results alone.
    std::vector<uint8_t> contents(bool results_only) const;

  private:
    uint8_t *place(std::size_t bytes, bool is_result);

    struct Buffer {
        std::span<uint8_t> bytes;
        bool is_result;
    };

    Placement placement_ = Placement::against_the_page_after;
    Destinations destinations_ = Destinations::of_their_own;
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

void PrintTo(const BulkCase &bulk_case, std::ostream *out);

class BulkExport : public testing::TestWithParam<BulkCase> {};

// Names the tests of a family's list.
std::string bulk_name(const testing::TestParamInfo<BulkCase> &info);

} // namespace tavik_test
