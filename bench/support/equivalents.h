// Calls of another library that do the work of a case, measured beside it in the same run.
#pragma once

#include <span>
#include <string>

#include "bench/support/picture.h"

namespace tavik_bench {

struct Equivalent {
    std::string case_name; // the case's name in its family's table
    std::string name;      // of the other library's call
    void (*call)(const Picture &picture);
};

// Those of OpenCV, on one thread; none where it is not installed.
std::span<const Equivalent> equivalents();

} // namespace tavik_bench
