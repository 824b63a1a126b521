// Runs the tests of a program; `--level=NAME` runs them at one vector level, or exits with 77 where the processor
// lacks it.
#include <iostream>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"
#include "tests/support/vector_level.h"

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    constexpr std::string_view option = "--level=";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (!argument.starts_with(option)) {
            std::cerr << "unknown argument: " << argument << '\n';
            return 2;
        }
        const std::string_view wanted = argument.substr(option.size());
        const auto levels = tavik_test::supported_levels();
        const auto found = std::find_if(levels.begin(), levels.end(),
                                        [&](auto level) { return tavik_test::name_of(level) == wanted; });
        if (found == levels.end()) {
            std::cout << "this processor has no level " << wanted << '\n';
            return 77;
        }
        tavik_test::set_active_level(*found);
    }
    tavik_test::register_bulk_tests();
    return RUN_ALL_TESTS();
}
