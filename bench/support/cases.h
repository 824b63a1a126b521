// What is measured: a table of cases for each family.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "bench/support/picture.h"

namespace tavik_bench {

struct CaseTraits {
    double bytes;              // read plus written for each pixel
    bool parallel = false;     // also measured with all threads
    bool in_place_too = false; // also measured with destination planes for sources
    int32_t rows = 0;          // only so many rows of the picture are handled; 0 means all
    std::string note = {};     // why the levels differ little, where they do
};

// One way of calling an export over the pixels of a picture.
struct Case {
    std::string name; // of the export, and what sets the call apart from others of it
    CaseTraits traits;
    void (*call)(const Picture &picture);
};

// The cases of one family, in a file of their own. Declaring it adds it to `families`.
struct Family {
    Family(std::string family_name, std::span<const Case> family_cases);

    std::string name;
    std::span<const Case> cases;
};

// All families, by name.
std::vector<const Family *> families();

} // namespace tavik_bench
