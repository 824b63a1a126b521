// What holds for every call of the families' lists, on many sizes:
//   - with every buffer against an inaccessible page on either side, nothing outside is touched,
//   - every vector level gives the bytes of the plain loops,
//   - destinations that are their own sources, where the export allows that, get the same bytes.
#include <array>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"
#include "tests/support/vector_level.h"

namespace tavik_test {
namespace {

struct Size {
    int32_t width;
    int32_t height;
};

// None, around the vector blocks of every level, and one size that is split between threads.
constexpr std::array<Size, 24> sizes = {{{0, 0},   {0, 3},   {4, 0},   {1, 1},   {2, 1},   {3, 2},
                                         {5, 1},   {7, 3},   {8, 2},   {9, 1},   {15, 1},  {16, 2},
                                         {17, 1},  {31, 1},  {33, 3},  {63, 1},  {64, 2},  {65, 1},
                                         {100, 3}, {127, 1}, {129, 2}, {257, 1}, {16, 33}, {501, 403}}};

class BulkExport : public testing::Test {
  public:
    explicit BulkExport(const BulkCase &bulk_case) : case_(bulk_case) {}

    void TestBody() override {
        const auto level_before = set_active_level(supported_levels().front());
        for (const Size size : sizes) check(size);
        set_active_level(level_before);
    }

  private:
    void run(Size size, Placement placement, Destinations destinations) {
        workspace_.begin(size.width, size.height, placement, destinations);
        case_.call(workspace_);
    }

    void check(Size size) {
        set_active_level(supported_levels().front());
        run(size, Placement::against_the_page_after, Destinations::of_their_own);
        const auto expected = workspace_.contents(false);
        const auto expected_results = workspace_.contents(true);
        for (const auto level : supported_levels()) {
            SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " at " << name_of(level));
            set_active_level(level);
            for (const auto placement : {Placement::against_the_page_before, Placement::against_the_page_after}) {
                run(size, placement, Destinations::of_their_own);
                ASSERT_TRUE(workspace_.contents(false) == expected) << "the bytes differ from the plain loop's";
                if (!case_.in_place) continue;
                run(size, placement, Destinations::in_place);
                ASSERT_TRUE(workspace_.contents(true) == expected_results) << "in place gives other bytes";
            }
        }
    }

    const BulkCase &case_;
    Workspace workspace_;
};

} // namespace

void register_bulk_tests() {
    for (const BulkFamily &family : bulk_families()) {
        const std::string suite = std::string(family.name) + "/BulkExport";
        for (const BulkCase &bulk_case : family.cases)
            testing::RegisterTest(suite.c_str(), bulk_case.name, nullptr, nullptr, __FILE__, __LINE__,
                                  [&bulk_case]() -> BulkExport * { return new BulkExport(bulk_case); });
    }
}

} // namespace tavik_test
