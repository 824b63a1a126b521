#pragma once

#include <span>
#include <string>

#include "host/exhibit.h"

namespace gallery {

// What the head of the page tells.
struct PageFacts {
    std::string library;
    std::string photo;      // the file that was read
    std::string photo_file; // the one beside the page
    std::string contact_sheet_file;
    int32_t width;
    int32_t height;
    int32_t available_memory_kib;
    int32_t total_memory_kib;
    int32_t pictures_mib;
};

// The page in HTML; it needs nothing but the pictures beside it.
std::string page(const PageFacts &facts, std::span<const Section> sections);

} // namespace gallery
