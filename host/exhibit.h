// What is kept of a run for the contact sheet and the page, once its picture is written.
#pragma once

#include <string>
#include <vector>

#include "host/recipe.h"
#include "host/run.h"

namespace gallery {

struct Exhibit {
    Recipe recipe;
    std::string picture_file;
    std::string layer_file; // empty when there is none
    bool compares_with_photo;
    int32_t width;
    int32_t height;
    std::vector<Calls> calls;
    std::vector<std::string> notes;
    Image thumbnail;
};

struct Section {
    Family family;
    std::vector<Exhibit> exhibits;
};

} // namespace gallery
