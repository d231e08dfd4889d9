// Tells how wide and high a text is, or why that is not known; before and after, whether the
// toolkit is in memory. A program of its own, so that a test can put it where it has its module and
// where it has not.
#include "drawing/page_drawer.h"

#include <fstream>
#include <iostream>
#include <string>

namespace {

bool toolkit_in_memory() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find("libwx_") != std::string::npos || line.find("libgtk") != std::string::npos)
      return true;
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  const char* const loaded[] = {"without", "with"};
  std::cout << loaded[toolkit_in_memory() ? 1 : 0] << " toolkit; ";
  const auto drawer = corvane::make_page_drawer();
  if (drawer) {
    corvane::text_style style;
    style.families = {"DejaVu Sans"};
    const auto extent = (*drawer)->measure(argc > 1 ? argv[1] : "", style, 0, 1);
    std::cout << extent.width << " x " << extent.height;
  } else {
    std::cout << drawer.error;
  }
  std::cout << "; " << loaded[toolkit_in_memory() ? 1 : 0] << " toolkit\n";
  return drawer ? 0 : 1;
}
