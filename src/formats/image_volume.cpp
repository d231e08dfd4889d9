#include "formats/image_volume.h"

#include <algorithm>

namespace corvane {

std::vector<std::uint8_t> volume_reader::bytes(std::uint64_t at, std::uint64_t size) {
  if (at > image_.size() || size > image_.size() - at)
    return {};
  std::vector<std::uint8_t> read(static_cast<std::size_t>(size));
  if (!image_.read(at, read))
    return {};
  return read;
}

std::vector<std::uint8_t> volume_reader::table(const std::string& name, std::uint64_t at,
                                               std::uint64_t size) {
  constexpr std::uint64_t largest = std::uint64_t{1024} * 1024;
  const std::uint64_t there = at < image_.size() ? image_.size() - at : 0;
  const std::uint64_t taken = std::min({size, largest, there, allowance_});
  if (taken < size)
    tell(name, at, taken == there ? "ends past the end of the image" : "is larger than it can be");
  allowance_ -= taken;
  return bytes(at, taken);
}

void volume_reader::check_size(const std::string& table, std::uint64_t at) {
  const std::uint64_t there = image_.size() / image_sector;
  if (volume_.sectors > there)
    tell(table, at,
         "states that there are " + std::to_string(volume_.sectors) + " sectors; the image has " +
             std::to_string(there));
}

bool volume_reader::has_room(const std::string& table, std::uint64_t at) {
  if (volume_.files.size() + volume_.folders.size() < most_image_files)
    return true;
  if (!full_)
    tell(table, at, "has more files than any disc");
  full_ = true;
  return false;
}

void volume_reader::add_file(const std::string& table, std::uint64_t at, disc_file file) {
  if (!has_room(table, at))
    return;
  const std::uint64_t begin = file.first_sector * image_sector;
  if (file.size > 0 && (begin > image_.size() || file.size > image_.size() - begin))
    tell(table, at, "has " + file.path + " end past the end of the image");
  volume_.files.push_back(std::move(file));
}

void volume_reader::add_folder(const std::string& table, std::uint64_t at, waiting_folder folder) {
  constexpr int deepest = 16;
  if (!has_room(table, at))
    return;
  if (folder.depth > deepest) {
    tell(table, at, "has folders within folders deeper than any disc");
  } else if (!known_.insert(folder.place).second) {
    tell(table, at, "has the folder " + folder.path + " in two places");
  } else {
    if (!folder.path.empty())
      volume_.folders.push_back(folder.path.substr(0, folder.path.size() - 1));
    waiting_.push_back(std::move(folder));
  }
}

bool volume_reader::next_folder(waiting_folder& folder) {
  if (waiting_.empty())
    return false;
  folder = std::move(waiting_.back());
  waiting_.pop_back();
  return true;
}

void volume_reader::finish() {
  std::sort(volume_.files.begin(), volume_.files.end(),
            [](const disc_file& a, const disc_file& b) { return a.path < b.path; });
  std::sort(volume_.folders.begin(), volume_.folders.end());
}

}  // namespace corvane
