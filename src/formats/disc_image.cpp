#include "formats/disc_image.h"

#include "formats/text.h"
#include "platform/files/files.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

bool is_of_video(const std::string& path) {
  return path.rfind("VIDEO_TS/", 0) == 0 || path.rfind("AUDIO_TS/", 0) == 0;
}

/// The files of one volume, found by path, or else by place.
class listed_files {
 public:
  explicit listed_files(const std::vector<disc_file>& files) {
    for (const disc_file& file : files) {
      by_path_[upper(file.path)] = &file;
      if (file.size > 0)
        by_place_[file.first_sector] = &file;
    }
  }
  /// What the other volume's file is here: null: nothing.
  const disc_file* same(const disc_file& file) const {
    const std::string path = upper(file.path);
    const auto named = by_path_.find(path);
    if (named != by_path_.end())
      return named->second;
    const auto placed = by_place_.find(file.first_sector);
    return is_of_video(path) || placed == by_place_.end() ? nullptr : placed->second;
  }
  /// Files that are empty have no place, and a name that may differ.
  static bool can_be_looked_for(const disc_file& file) {
    return file.size > 0 || is_of_video(upper(file.path));
  }

 private:
  std::map<std::string, const disc_file*> by_path_;
  std::map<std::uint32_t, const disc_file*> by_place_;
};

std::string place_of(const disc_file& file) {
  return std::to_string(file.size) + " bytes from sector " + std::to_string(file.first_sector);
}

void compare(const disc_image& image, std::vector<std::string>& differences) {
  const listed_files iso(image.iso9660.files), udf(image.udf.files);
  const auto differ = [&differences](std::string text) {
    if (differences.size() < most_troubles)
      differences.push_back(std::move(text));
  };
  for (const disc_file& file : image.udf.files) {
    const disc_file* const other = iso.same(file);
    if (other == nullptr && listed_files::can_be_looked_for(file))
      differ(file.path + " is listed by UDF and not by ISO 9660");
    else if (other != nullptr && (other->size != file.size ||
                                  (file.size > 0 && other->first_sector != file.first_sector)))
      differ(file.path + " has " + place_of(file) + " in UDF, " + place_of(*other) +
             " in ISO 9660");
  }
  for (const disc_file& file : image.iso9660.files)
    if (udf.same(file) == nullptr && listed_files::can_be_looked_for(file))
      differ(file.path + " is listed by ISO 9660 and not by UDF");
}

class image_files : public disc_files {
 public:
  image_files(std::unique_ptr<byte_source> image, std::vector<disc_file> files)
      : image_(std::move(image)), files_(std::move(files)) {}

  const std::vector<disc_file>& files() const override { return files_; }

  bool read(const disc_file& file, std::uint64_t at, std::span<std::uint8_t> buffer) override {
    if (at > file.size || buffer.size() > file.size - at)
      return false;
    return image_->read(std::uint64_t{file.first_sector} * disc_sector + at, buffer);
  }

 private:
  static constexpr std::uint64_t disc_sector = 2048;
  std::unique_ptr<byte_source> image_;
  std::vector<disc_file> files_;
};

bool has_video(const image_volume& volume) {
  return std::any_of(volume.files.begin(), volume.files.end(), [](const disc_file& file) {
    return upper(file.path).rfind("VIDEO_TS/", 0) == 0;
  });
}

}  // namespace

disc_image read_disc_image(byte_source& image) {
  disc_image read{read_iso9660(image), read_udf(image), {}};
  if (read.iso9660.found && read.udf.found)
    compare(read, read.differences);
  return read;
}

result<std::unique_ptr<disc_files>> open_image(std::unique_ptr<byte_source> image) {
  using opened = result<std::unique_ptr<disc_files>>;
  image_volume volume = read_udf(*image);
  if (!has_video(volume))
    volume = read_iso9660(*image);
  if (!has_video(volume))
    return opened::fail("there is no VIDEO_TS in the image");
  return opened::ok(std::make_unique<image_files>(std::move(image), std::move(volume.files)));
}

result<std::unique_ptr<disc_files>> open_disc(std::string_view native_path) {
  if (folder_exists(native_path))
    return open_folder(native_path);
  auto image = open_bytes(native_path);
  if (!image)
    return result<std::unique_ptr<disc_files>>::fail(image.error);
  return open_image(std::move(*image));
}

}  // namespace corvane
