#include "authoring/last_disc.h"

#include "formats/numbers.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <cmath>
#include <cstdint>

namespace corvane {
namespace {

/// "1.23 GB", of 1,000,000,000 bytes, as discs are sold.
std::string gigabytes(std::uintmax_t bytes) {
  constexpr double hundredths_each = 1e7;
  const auto hundredths =
      static_cast<std::int64_t>(std::llround(static_cast<double>(bytes) / hundredths_each));
  const std::string decimals = trimmed(hundredths % 100);
  return trimmed(hundredths / 100) + "." + (decimals.size() < 2 ? "0" : "") + decimals + " GB";
}

std::uintmax_t size_of_files_in(const std::string& folder) {
  std::uintmax_t bytes = 0;
  for (const std::string& name : files_in(folder))
    bytes += file_size(join_path(folder, name)).value_or(0);
  return bytes;
}

}  // namespace

last_disc look_at_last_disc(const std::string& folder, bool asks_for_image, run_outcome outcome) {
  last_disc disc;
  disc.folder = folder;
  const std::string video = join_path(folder, "VIDEO_TS");
  if (outcome != run_outcome::success) {
    disc.text = (outcome == run_outcome::stopped ? "The run was stopped: " : "The run failed: ") +
                std::string("there is no new disc in ") + folder;
    return disc;
  }
  disc.is_there = folder_exists(video);
  disc.text = "Ready: " + folder + ", " + gigabytes(size_of_files_in(video));
  const std::string image = folder + ".iso";
  if (asks_for_image && file_exists(image)) {
    disc.image = image;
    disc.text += ", image " + image;
  }
  return disc;
}

}  // namespace corvane
