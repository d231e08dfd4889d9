// disc-report [--project PROJECT.cvp] DISC...
//
// Prints what is on a DVD-Video disc (a folder that holds VIDEO_TS, or an image), with --project
// beside what the project asks for. The buttons of its menus are pressed on a player's machine.
// Status 0: read (and as asked for); 1: disc and project disagree, or the image it asks for is not
// among the discs; 2: bad arguments or nothing to read.
#include "platform/files/files.h"
#include "report.h"
#include "walk.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace corvane::disc;

constexpr const char* usage =
    "usage: disc-report [--project PROJECT.cvp] DISC...\n"
    "Prints what is on DVD-Video discs: folders that hold VIDEO_TS, or images.\n"
    "With --project, beside what the project asks for.\n";

/// Reports on one disc. Gives the exit status.
int report_on(const std::string& place, const asked_disc* asked) {
  std::optional<iso_volume> image;
  if (corvane::file_exists(place)) {
    auto volume = read_iso_volume(place);
    if (!volume) {
      std::cerr << "disc-report: " << place << ": " << volume.error << "\n";
      return 2;
    }
    image = *volume;
  }
  auto on_disc = read_disc(place);
  if (!on_disc) {
    std::cerr << "disc-report: " << on_disc.error << "\n";
    return 2;
  }
  press_all_buttons(place, *on_disc);
  const auto rows = report(*on_disc, asked, image ? &*image : nullptr);
  std::cout << (image ? "Image " : "Folder ") << place << "\n\n"
            << table(rows, asked != nullptr) << "\n";
  if (all_agree(rows))
    return 0;
  std::cout << "Disc and project DISAGREE.\n";
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> places(argv + 1, argv + argc);
  std::optional<asked_disc> asked;
  if (!places.empty() && places[0] == "--help") {
    std::cout << usage;
    return 0;
  }
  if (places.size() >= 2 && places[0] == "--project") {
    auto read = read_asked(places[1]);
    if (!read) {
      std::cerr << "disc-report: " << places[1] << ": " << read.error << "\n";
      return 2;
    }
    asked = *read;
    places.erase(places.begin(), places.begin() + 2);
  }
  if (places.empty()) {
    std::cerr << usage;
    return 2;
  }
  int status = 0;
  for (const std::string& place : places)
    status = std::max(status, report_on(place, asked ? &*asked : nullptr));
  const bool image_read = std::any_of(places.begin(), places.end(), [](const std::string& place) {
    return corvane::file_exists(place);
  });
  if (asked && asked->iso && !image_read) {
    std::cout << "The project asks for an image, and there is none.\n";
    status = std::max(status, 1);
  }
  return status;
}
