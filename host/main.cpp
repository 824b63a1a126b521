#include <exception>
#include <iomanip>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/gallery.h"
#include "host/library.h"

namespace {

void list_recipes(const std::vector<gallery::Family> &families) {
    for (const gallery::Family &family : families) {
        std::cout << family.name << '\n';
        for (const gallery::Recipe &recipe : family.recipes) {
            std::cout << "  " << std::left << std::setw(20) << recipe.name << recipe.title << ':';
            for (const std::string &name : recipe.exports) std::cout << ' ' << name;
            std::cout << '\n';
        }
    }
}

int fail(const std::string &what) {
    std::cerr << "tavik_gallery: " << what << std::endl;
    return 1;
}

int run(int argc, char **argv) {
    CLI::App app("Runs recipes of library calls on a photo and writes pictures, a contact sheet and index.html.");
    std::string library;
    std::string output = "gallery";
    std::vector<std::string> recipes;
    std::string photo;
    bool list = false;
    // One command line on every system: a slash begins a path.
    app.allow_windows_style_options(false);
    app.add_option("--library", library, "The library to load; by default the one beside this program")->take_last();
    app.add_option("--output", output, "The folder to write to")->capture_default_str()->take_last();
    app.add_option("--recipe", recipes, "Runs only this recipe; may be given several times")->allow_extra_args(false);
    app.add_flag("--list", list, "Lists the recipes and the exports they call");
    app.add_option("photo", photo, "The photo, a PNG or JPEG file");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp &help) {
        return app.exit(help);
    } catch (const CLI::ParseError &error) {
        return fail(std::string(error.what()) + " (--help tells more)");
    }

    const std::vector<gallery::Family> families = gallery::chosen_families(recipes);
    if (list) {
        list_recipes(families);
        return 0;
    }
    if (photo.empty()) return fail("no photo is given (--help tells more)");
    gallery::make_gallery(library.empty() ? gallery::library_beside_program() : std::filesystem::path(library), photo,
                          output, families);
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc &) {
        return fail("not enough memory for a photo of this size");
    } catch (const std::exception &error) {
        return fail(error.what());
    }
}
