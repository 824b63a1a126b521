#include "host/gallery.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <stdexcept>

#include "host/contact_sheet.h"
#include "host/exhibit.h"
#include "host/file.h"
#include "host/page.h"
#include "host/recipe_list.h"
#include "tavik/frame/frame.h"

namespace gallery {
namespace {

namespace fs = std::filesystem;

constexpr const char *photo_file = "photograph.png";
constexpr const char *contact_sheet_file = "contact_sheet.png";
constexpr const char *recipe_list_file = "recipes.xml";
constexpr const char *page_file = "index.html";

void require_exports(const Library &library, std::span<const Family> families) {
    for (const char *name : {"MemoryInfo", "CalcMem"}) library.address(name);
    for (const Family &family : families)
        for (const Recipe &recipe : family.recipes)
            for (const std::string &name : recipe.exports) library.address(name.c_str());
}

// A photo beside the pictures might have the name of one and be overwritten.
void require_elsewhere(const fs::path &photo_path, const fs::path &folder) {
    if (fs::equivalent(fs::absolute(photo_path).parent_path(), folder))
        throw std::runtime_error(folder.string() + ": is the photo's own folder (--output chooses another)");
}

void write_picture(const fs::path &path, const Image &image) {
    const std::vector<uint8_t> png = png_of(image);
    replace_file(path, {reinterpret_cast<const char *>(png.data()), png.size()});
}

Exhibit exhibit_of(Run &run, const Recipe &recipe, const fs::path &folder) {
    Exhibit exhibit{recipe,
                    std::string(recipe.name) + ".png",
                    run.layer ? std::string(recipe.name) + "_layer.png" : "",
                    run.compares_with_photo(),
                    run.picture.width,
                    run.picture.height,
                    run.calls(),
                    run.notes(),
                    shrunk_to_fit(run.picture, thumbnail_width, thumbnail_height)};
    write_picture(folder / exhibit.picture_file, run.picture);
    if (run.layer) write_picture(folder / exhibit.layer_file, *run.layer);
    return exhibit;
}

// Numbers the recipes on standard output.
class Progress {
  public:
    explicit Progress(std::size_t steps) : steps_(steps) {}

    void tell(const Family &family, const Exhibit &exhibit) {
        std::cout << '[' << std::setw(static_cast<int>(std::to_string(steps_).size())) << ++step_ << '/' << steps_
                  << "] " << std::left << std::setw(28) << family.name + std::string("/") + exhibit.recipe.name
                  << std::right << std::setw(12) << text_of(total_time(exhibit.calls)) << std::endl;
    }

  private:
    std::size_t steps_;
    std::size_t step_ = 0;
};

std::size_t recipe_count(std::span<const Family> families) {
    std::size_t count = 0;
    for (const Family &family : families) count += family.recipes.size();
    return count;
}

PageFacts page_facts(const Library &library, const fs::path &photo_path, const Image &photo, const fs::path &folder,
                     std::size_t pictures) {
    const Recipe head = {"head", "", "", {"MemoryInfo", "CalcMem"}, nullptr};
    Run run(library, head, photo, folder);
    PageFacts facts{};
    facts.library = library.file_name().string();
    facts.photo = photo_path.filename().string();
    facts.photo_file = photo_file;
    facts.contact_sheet_file = contact_sheet_file;
    facts.width = photo.width;
    facts.height = photo.height;
    int32_t available_page_file = 0;
    int32_t total_page_file = 0;
    run.call(EXPORT(MemoryInfo), &facts.available_memory_kib, &facts.total_memory_kib, &available_page_file,
             &total_page_file);
    facts.pictures_mib = run.call(EXPORT(CalcMem), photo.width, photo.height, static_cast<int32_t>(pictures));
    return facts;
}

} // namespace

std::vector<Family> chosen_families(std::span<const std::string> names) {
    std::vector<Family> chosen = families();
    if (names.empty()) return chosen;
    for (const std::string &name : names) {
        const bool known = std::ranges::any_of(chosen, [&](const Family &family) {
            return std::ranges::any_of(family.recipes, [&](const Recipe &recipe) { return recipe.name == name; });
        });
        if (!known) throw std::runtime_error("no recipe is called " + name + " (--list names them all)");
    }
    for (Family &family : chosen)
        std::erase_if(family.recipes,
                      [&](const Recipe &recipe) { return std::ranges::find(names, recipe.name) == names.end(); });
    std::erase_if(chosen, [](const Family &family) { return family.recipes.empty(); });
    return chosen;
}

void make_gallery(const fs::path &library_path, const fs::path &photo_path, const fs::path &folder,
                  std::span<const Family> families) {
    const Library library(library_path);
    require_exports(library, families);
    const Image photo = read_photo(photo_path);
    prepare_folder(folder);
    require_elsewhere(photo_path, folder);
    std::cout << "library " << library_path.string() << "\nphoto   " << photo_path.string() << ", " << photo.width
              << " x " << photo.height << std::endl;

    write_picture(folder / photo_file, photo);
    Progress progress(recipe_count(families));
    std::vector<Section> sections;
    for (const Family &family : families) {
        Section section{family, {}};
        for (const Recipe &recipe : family.recipes) {
            Run run(library, recipe, photo, folder);
            recipe.make(run);
            section.exhibits.push_back(exhibit_of(run, recipe, folder));
            progress.tell(family, section.exhibits.back());
        }
        sections.push_back(std::move(section));
    }
    write_picture(folder / contact_sheet_file, contact_sheet(sections));
    replace_file(folder / recipe_list_file, recipe_list(sections));
    replace_file(folder / page_file,
                 page(page_facts(library, photo_path, photo, folder, recipe_count(families)), sections));
    std::cout << "contact sheet " << fs::absolute(folder / contact_sheet_file).string() << "\npage          "
              << fs::absolute(folder / page_file).string() << std::endl;
}

} // namespace gallery
