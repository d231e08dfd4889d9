#include "formats/image_volume.h"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace corvane {

namespace {

constexpr std::uint64_t first_descriptor = 16, last_descriptor = 32;

std::string text_at(const table_bytes& bytes, std::uint64_t at, std::uint64_t count) {
  std::string text;
  for (std::uint64_t i = 0; i < count; ++i)
    text += static_cast<char>(bytes.u8(at + i));
  return text;
}

/// A folder as the path tables and the directories know it.
struct known_folder {
  std::string name;
  std::uint32_t place = 0, parent = 0;
  bool operator<(const known_folder& o) const {
    return std::tie(place, parent, name) < std::tie(o.place, o.parent, o.name);
  }
  bool operator==(const known_folder&) const = default;
};

class iso_reader {
 public:
  iso_reader(byte_source& image, image_volume& volume) : out_(image, volume), volume_(volume) {}

  void read();

 private:
  void read_primary(const table_bytes& sector, std::uint64_t at);
  std::uint32_t both32(const table_bytes& bytes, std::uint64_t place, const std::string& table,
                       std::uint64_t at);
  void check_form(const table_bytes& bytes, std::uint64_t place, const std::string& table,
                  std::uint64_t at);
  void read_folder(const waiting_folder& folder);
  void check_rest(const table_bytes& bytes, std::uint64_t begin, std::uint64_t end,
                  std::uint64_t at);
  std::uint64_t read_record(const waiting_folder& folder, const table_bytes& bytes,
                            std::uint64_t place, std::uint64_t at, int number);
  void read_named(const waiting_folder& folder, const disc_file& found, bool is_folder,
                  const std::string& name, std::uint64_t at);
  void check_self(const waiting_folder& folder, std::uint32_t place, bool parent, std::uint64_t at);
  std::vector<known_folder> path_table(std::uint64_t sector, std::uint32_t size, bool high_first);
  void check_path_tables();

  volume_reader out_;
  image_volume& volume_;
  std::vector<known_folder> folders_;  // as the directories have them
  std::uint64_t primary_ = 0;          // byte of the descriptor
  std::uint32_t paths_size_ = 0, paths_low_ = 0, paths_high_ = 0;
  std::string continued_;  // the file whose next piece must follow
};

/// A number that stands there lowest byte first, and then highest byte first.
std::uint32_t iso_reader::both32(const table_bytes& bytes, std::uint64_t place,
                                 const std::string& table, std::uint64_t at) {
  const std::uint32_t low = bytes.le32(place), high = bytes.u32(place + 4);
  if (low != high)
    out_.tell(table, at + place,
              "has a number that is " + std::to_string(low) + " in one order of bytes and " +
                  std::to_string(high) + " in the other");
  return low;
}

/// What a record of a file or folder says besides its place and size: it is in one piece, without
/// attributes in front of it, and on the only disc of its set.
void iso_reader::check_form(const table_bytes& bytes, std::uint64_t place, const std::string& table,
                            std::uint64_t at) {
  constexpr unsigned reserved_flags = 0x60;
  if (bytes.u8(place + 1) != 0 || bytes.u8(place + 26) != 0 || bytes.u8(place + 27) != 0 ||
      (bytes.u8(place + 25) & reserved_flags) != 0)
    out_.tell(table, at + place, "has attributes, pieces or flags that a disc's files do not have");
  if (bytes.le16(place + 28) != bytes.u16(place + 30))
    out_.tell(table, at + place,
              "has another disc of its set in one order of bytes than in the other");
}

void iso_reader::read_primary(const table_bytes& sector, std::uint64_t at) {
  const std::string table = "ISO 9660 descriptor";
  if (sector.u8(6) != 1)
    out_.tell(table, at + 6, "is of another version");
  if (sector.le16(120) != sector.u16(122) || sector.le16(124) != sector.u16(126))
    out_.tell(table, at + 120, "has another set of discs in one order of bytes than in the other");
  check_form(sector, 156, table, at);
  primary_ = at;
  volume_.name = text_at(sector, 40, 32);
  volume_.name.erase(volume_.name.find_last_not_of(' ') + 1);
  volume_.sectors = both32(sector, 80, table, at);
  out_.check_size(table, at + 80);
  if (sector.le16(128) != image_sector || sector.u16(130) != image_sector)
    out_.tell(table, at + 128, "states sectors of another size than 2048 bytes");
  paths_size_ = both32(sector, 132, table, at);
  paths_low_ = sector.le32(140);
  paths_high_ = sector.u32(148);
  waiting_folder root;
  root.place = root.parent = both32(sector, 156 + 2, table, at);
  root.size = both32(sector, 156 + 10, table, at);
  folders_.push_back({std::string(1, '\0'), sector.le32(158), sector.le32(158)});
  out_.add_folder(table, at + 156, root);
}

/// The first two records of a folder are itself and the folder that it is in.
void iso_reader::check_self(const waiting_folder& folder, std::uint32_t place, bool parent,
                            std::uint64_t at) {
  if (place != (parent ? folder.parent : folder.place))
    out_.tell("ISO 9660 folder", at,
              std::string("names sector ") + std::to_string(place) + " as " +
                  (parent ? "the folder above" : "its own"));
}

void iso_reader::read_named(const waiting_folder& folder, const disc_file& found, bool is_folder,
                            const std::string& name, std::uint64_t at) {
  const std::string table = "ISO 9660 folder";
  if (is_folder) {
    folders_.push_back({name, found.first_sector, static_cast<std::uint32_t>(folder.place)});
    out_.add_folder(
        table, at,
        {folder.path + name + "/", found.first_sector, folder.place, found.size, folder.depth + 1});
    return;
  }
  const std::string path = folder.path + name.substr(0, name.find(';'));
  if (path == continued_ && !volume_.files.empty() && volume_.files.back().path == path) {
    disc_file& begun = volume_.files.back();
    if (begun.first_sector + (begun.size + image_sector - 1) / image_sector != found.first_sector)
      out_.tell(table, at, "has " + path + " in pieces that do not follow each other");
    begun.size += found.size;
    return;
  }
  out_.add_file(table, at, {path, found.size, found.first_sector});
}

/// Reads record `number` (from 0) at `place`; gives its length, 0 when the sector holds no more.
std::uint64_t iso_reader::read_record(const waiting_folder& folder, const table_bytes& bytes,
                                      std::uint64_t place, std::uint64_t at, int number) {
  constexpr std::uint64_t name_at = 33;
  constexpr unsigned folder_flag = 2, more_flag = 0x80;
  const std::string table = "ISO 9660 folder";
  const std::uint64_t length = bytes.u8(place);
  if (length == 0)
    return 0;
  const std::uint64_t name_length = bytes.u8(place + 32);
  const std::uint64_t in_sector = image_sector - place % image_sector;
  if (length < name_at + 1 || name_at + name_length > length || length > in_sector ||
      !bytes.holds(place, length)) {
    out_.tell(table, at + place, "has an entry that does not fit into itself");
    return 0;
  }
  const std::string record = "ISO 9660 folder entry";
  disc_file found;
  found.first_sector = both32(bytes, place + 2, record, at);
  found.size = both32(bytes, place + 10, record, at);
  check_form(bytes, place, record, at);
  const unsigned flags = bytes.u8(place + 25);
  const std::string name = text_at(bytes, place + name_at, name_length);
  const bool special = name_length == 1 && bytes.u8(place + name_at) < 2;
  if (special != (number < 2))
    out_.tell(table, at + place, "does not begin with itself and the folder above");
  if (special && (flags & folder_flag) == 0)
    out_.tell(table, at + place, "is not said to be a folder");
  if (special)
    check_self(folder, found.first_sector, bytes.u8(place + name_at) == 1, at + place);
  else
    read_named(folder, found, (flags & folder_flag) != 0, name, at + place);
  continued_ = (flags & more_flag) != 0 ? folder.path + name.substr(0, name.find(';')) : "";
  return length;
}

/// Behind the last entry of a sector there is nothing: an entry whose length is gone would be lost
/// without a word.
void iso_reader::check_rest(const table_bytes& bytes, std::uint64_t begin, std::uint64_t end,
                            std::uint64_t at) {
  for (std::uint64_t place = begin; place < end; ++place)
    if (bytes.u8(place) != 0) {
      out_.tell("ISO 9660 folder", at + place, "has bytes that belong to no entry");
      return;
    }
}

void iso_reader::read_folder(const waiting_folder& folder) {
  const std::uint64_t at = folder.place * image_sector;
  const auto data = out_.table("ISO 9660 folder", at, folder.size);
  const table_bytes bytes(data);
  int number = 0;
  for (std::uint64_t place = 0; place < bytes.size();) {
    const std::uint64_t length = read_record(folder, bytes, place, at, number++);
    if (length == 0) {
      --number;
      const std::uint64_t next = (place / image_sector + 1) * image_sector;
      check_rest(bytes, place, next, at);
      place = next;
    } else {
      place += length;
    }
  }
}

std::vector<known_folder> iso_reader::path_table(std::uint64_t sector, std::uint32_t size,
                                                 bool high_first) {
  const std::string table = "ISO 9660 path table";
  const auto data = out_.table(table, sector * image_sector, size);
  const table_bytes bytes(data);
  std::vector<known_folder> folders;
  for (std::uint64_t place = 0; place < bytes.size() && folders.size() < most_image_files;) {
    const std::uint64_t length = bytes.u8(place);
    if (length == 0 || !bytes.holds(place, 8 + length)) {
      out_.tell(table, sector * image_sector + place, "has an entry that does not fit into it");
      break;
    }
    if (bytes.u8(place + 1) != 0)
      out_.tell(table, sector * image_sector + place,
                "has an entry with attributes, which a disc's folders do not have");
    const std::uint32_t own = high_first ? bytes.u32(place + 2) : bytes.le32(place + 2);
    const std::uint32_t above = high_first ? bytes.u16(place + 6) : bytes.le16(place + 6);
    const std::uint32_t parent =
        above >= 1 && above <= folders.size() ? folders[above - 1].place : own;
    folders.push_back({text_at(bytes, place + 8, length), own, parent});
    place += 8 + length + length % 2;
  }
  std::sort(folders.begin(), folders.end());
  return folders;
}

void iso_reader::check_path_tables() {
  std::sort(folders_.begin(), folders_.end());
  if (path_table(paths_low_, paths_size_, false) != folders_)
    out_.tell("ISO 9660 path table", paths_low_ * image_sector,
              "does not list the folders that there are");
  if (path_table(paths_high_, paths_size_, true) != folders_)
    out_.tell("ISO 9660 path table", paths_high_ * image_sector,
              "does not list the folders that there are");
}

void iso_reader::read() {
  bool is_ended = false;
  for (std::uint64_t number = first_descriptor; number <= last_descriptor; ++number) {
    const auto data = out_.sector(number);
    const table_bytes sector(data);
    const bool is_descriptor = text_at(sector, 1, 5) == "CD001";
    is_ended = is_descriptor && sector.u8(0) == 0xFF && sector.u8(6) == 1;
    if (!is_descriptor || sector.u8(0) == 0xFF)
      break;
    if (sector.u8(0) != 1 || volume_.found)
      continue;
    volume_.found = true;
    read_primary(sector, number * image_sector);
  }
  if (!volume_.found) {
    out_.tell("ISO 9660 descriptor", first_descriptor * image_sector, "is not there");
    return;
  }
  if (!is_ended)
    out_.tell("ISO 9660 descriptor", first_descriptor * image_sector, "has no other at its end");
  waiting_folder folder;
  while (out_.next_folder(folder))
    read_folder(folder);
  check_path_tables();
  out_.finish();
}

}  // namespace

image_volume read_iso9660(byte_source& image) {
  image_volume volume;
  iso_reader(image, volume).read();
  return volume;
}

}  // namespace corvane
