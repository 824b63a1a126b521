// Fuzzes the bulk exports: the input chooses the call, its size and its parameters, inside the preconditions. Every
// buffer lies against an inaccessible page, and each vector level must give the bytes of the plain loops.
// `--family=NAME` keeps to one family, `--families` lists them; all else is libFuzzer's.
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/bulk.h"
#include "tests/support/vector_level.h"

using namespace tavik_test;

namespace {

constexpr int32_t sizes = 101; // 0 .. 100

std::vector<const BulkCase *> calls; // those that an input may choose

int32_t next(std::span<const uint8_t> &input) {
    const int32_t value = input.front();
    input = input.subspan(1);
    return value;
}

void keep_families(std::string_view wanted) {
    for (const BulkFamily &family : bulk_families())
        if (wanted.empty() || wanted == family.name)
            for (const BulkCase &bulk_case : family.cases) calls.push_back(&bulk_case);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) {
    std::string_view wanted;
    for (int i = 1; i < *argc; ++i) {
        const std::string_view argument = (*argv)[i];
        constexpr std::string_view option = "--family=";
        if (argument.starts_with(option)) wanted = argument.substr(option.size());
        if (argument != "--families") continue;
        for (const BulkFamily &family : bulk_families()) std::cout << family.name << '\n';
        std::exit(EXIT_SUCCESS);
    }
    keep_families(wanted);
    if (!calls.empty()) return 0;
    std::cerr << "fuzz: no family " << wanted << '\n';
    std::exit(2);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t bytes) {
    static Workspace workspace;
    constexpr std::size_t head = 4;
    std::span<const uint8_t> input(data, bytes);
    if (input.size() < head) return 0;
    const auto high = static_cast<std::size_t>(next(input));
    const BulkCase &chosen = *calls[high % calls.size()];
    const int32_t width = next(input) % sizes;
    const int32_t height = next(input) % sizes;
    const auto placement =
        next(input) % 2 == 0 ? Placement::against_the_page_after : Placement::against_the_page_before;
    std::vector<uint8_t> expected;
    for (const auto level : supported_levels()) {
        set_active_level(level);
        workspace.begin(width, height, placement, Destinations::of_their_own, input);
        chosen.call(workspace);
        const auto contents = workspace.contents(false);
        if (level == supported_levels().front()) expected = contents;
        if (contents == expected) continue;
        std::cerr << "fuzz: " << chosen.name << ", " << width << " x " << height << ": the bytes at " << name_of(level)
                  << " differ from the plain loop's\n";
        std::abort();
    }
    return 0;
}
