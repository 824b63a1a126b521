#include "host/recipe_list.h"

#include <sstream>

#include "host/markup.h"

namespace gallery {

std::string recipe_list(std::span<const Section> sections) {
    std::ostringstream xml;
    xml << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<recipes>\n";
    for (const Section &section : sections) {
        for (const Exhibit &exhibit : section.exhibits) {
            xml << "<recipe name=\"" << exhibit.recipe.name << "\" title=\"" << escaped(exhibit.recipe.title)
                << "\" picture=\"" << exhibit.picture_file << "\" width=\"" << exhibit.width << "\" height=\""
                << exhibit.height << "\">";
            for (const std::string &name : exhibit.recipe.exports) xml << "<export>" << name << "</export>";
            xml << "</recipe>\n";
        }
    }
    xml << "</recipes>\n";
    return xml.str();
}

} // namespace gallery
