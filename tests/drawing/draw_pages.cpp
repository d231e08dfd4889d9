// For looking at pages as they are drawn: writes the sample pages as PNG files into a folder.
//   draw_pages FOLDER
#include "drawing/page_drawer.h"
#include "drawing/png_file.h"
#include "drawing/sample_pages.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <iostream>
#include <memory>
#include <string>

int main(int argc, char** argv) {
  using namespace corvane;
  if (argc != 2) {
    std::cerr << "usage: draw_pages FOLDER\n";
    return 2;
  }
  const auto drawer = make_page_drawer();
  if (!drawer) {
    std::cerr << drawer.error << "\n";
    return 1;
  }
  for (const auto& [name, page] : drawing_test::sample_pages()) {
    const page_drawing drawn = (*drawer)->draw(page, [](const std::string& file, double) {
      return result<std::shared_ptr<const shaped_picture>>::ok(
          std::make_shared<const shaped_picture>(drawing_test::sample_picture(file)));
    });
    const std::string path = join_path(argv[1], name + ".png");
    if (const failure why = write_file(path, png_of(drawn.canvas))) {
      std::cerr << path << ": " << *why << "\n";
      return 1;
    }
  }
  return 0;
}
