#include "host/page.h"

#include <sstream>

#include "host/markup.h"
#include "page_assets.h"

namespace gallery {
namespace {

std::string picture_tag(const std::string &file, const std::string &alternative, const Exhibit &exhibit) {
    std::ostringstream html;
    html << "<img src=\"" << file << "\" alt=\"" << escaped(alternative) << "\" width=\"" << exhibit.width
         << "\" height=\"" << exhibit.height << "\">";
    return html.str();
}

void write_picture(std::ostream &html, const PageFacts &facts, const Exhibit &exhibit) {
    const std::string title = exhibit.recipe.title;
    if (!exhibit.compares_with_photo) {
        html << "<a class=\"picture\" href=\"" << exhibit.picture_file << "\">"
             << picture_tag(exhibit.picture_file, title, exhibit) << "</a>\n";
        return;
    }
    html << "<div class=\"picture compare\">" << picture_tag(exhibit.picture_file, title + ", after", exhibit)
         << "<div class=\"before\">" << picture_tag(facts.photo_file, title + ", before", exhibit) << "</div>"
         << "<span class=\"chip left\">before</span><span class=\"chip right\">after</span>"
         << "<span class=\"handle\"></span>"
         << "<input type=\"range\" min=\"0\" max=\"100\" step=\"0.1\" value=\"50\" aria-label=\"" << escaped(title)
         << ": how much of the photo before is shown\"></div>\n";
}

void write_calls(std::ostream &html, const Exhibit &exhibit) {
    html << "<table><thead><tr><th>call</th><th>times</th><th>took</th></tr></thead><tbody>\n";
    for (const Calls &calls : exhibit.calls)
        html << "<tr><td><code>" << escaped(calls.text()) << "</code></td><td>" << calls.count << "</td><td>"
             << text_of(calls.time) << "</td></tr>\n";
    html << "</tbody></table>\n";
}

void write_exhibit(std::ostream &html, const PageFacts &facts, const Exhibit &exhibit) {
    html << "<article id=\"" << exhibit.recipe.name << "\">\n";
    write_picture(html, facts, exhibit);
    html << "<div class=\"text\"><h3>" << escaped(exhibit.recipe.title) << "</h3>\n<p>"
         << escaped(exhibit.recipe.sentence);
    for (const std::string &note : exhibit.notes) html << " " << escaped(note);
    html << "</p>\n";
    if (!exhibit.layer_file.empty())
        html << "<a class=\"layer\" href=\"" << exhibit.layer_file << "\">"
             << picture_tag(exhibit.layer_file, "the layer", exhibit) << "<span>the layer</span></a>\n";
    write_calls(html, exhibit);
    html << "</div></article>\n";
}

void write_section(std::ostream &html, const PageFacts &facts, const Section &section) {
    html << "<section id=\"" << section.family.name << "-family\">\n<h2>" << section.family.name
         << "</h2>\n<p class=\"about\">" << escaped(section.family.sentence) << "</p>\n<div class=\"grid\">\n";
    for (const Exhibit &exhibit : section.exhibits) write_exhibit(html, facts, exhibit);
    html << "</div>\n</section>\n";
}

void write_fact(std::ostream &html, const char *name, const std::string &value) {
    html << "<div><dt>" << name << "</dt><dd>" << value << "</dd></div>\n";
}

void write_head(std::ostream &html, const PageFacts &facts, std::span<const Section> sections) {
    constexpr int32_t kib_per_mib = 1024;
    html << "<header>\n<h1>tavik gallery</h1>\n"
         << "<p class=\"about\">One photograph and what the library makes of it. Move a divider to compare; the table "
            "below a picture lists the calls that made it. Each call was timed once, so the first parallel one "
            "includes the start of the worker threads.</p>\n<dl>\n";
    write_fact(html, "library", escaped(facts.library));
    write_fact(html, "photo",
               "<a href=\"" + facts.photo_file + "\">" + escaped(facts.photo) + "</a>, " + std::to_string(facts.width) +
                   " × " + std::to_string(facts.height));
    write_fact(html, "these pictures", std::to_string(facts.pictures_mib) + " MiB");
    write_fact(html, "free memory",
               std::to_string(facts.available_memory_kib / kib_per_mib) + " of " +
                   std::to_string(facts.total_memory_kib / kib_per_mib) + " MiB");
    html << "</dl>\n<nav>\n";
    for (const Section &section : sections)
        html << "<a href=\"#" << section.family.name << "-family\">" << section.family.name << "</a>\n";
    html << "<a href=\"" << facts.contact_sheet_file << "\">contact sheet</a>\n</nav>\n</header>\n";
}

} // namespace

std::string page(const PageFacts &facts, std::span<const Section> sections) {
    std::ostringstream html;
    html << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>tavik gallery</title>\n"
         << "<style>\n"
         << page_style << "</style>\n</head>\n<body>\n";
    write_head(html, facts, sections);
    html << "<main>\n";
    for (const Section &section : sections) write_section(html, facts, section);
    html << "</main>\n<script>\n" << page_script << "</script>\n</body>\n</html>\n";
    return html.str();
}

} // namespace gallery
