// What the readers of an image's two volumes share. Used within the room only.
#pragma once

#include "formats/disc_image.h"
#include "formats/table_bytes.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

inline constexpr std::uint64_t image_sector = 2048;

/// A folder still to be read.
struct waiting_folder {
  std::string path;          ///< with "/" at its end; empty: the root
  std::uint64_t place = 0;   ///< the sector by which the volume knows it
  std::uint64_t parent = 0;  ///< the same of the folder that it is in
  std::uint64_t size = 0;
  int depth = 0;
};

/// Collects a volume's files; keeps what an image can make it do within bounds.
class volume_reader {
 public:
  volume_reader(byte_source& image, image_volume& volume) : image_(image), volume_(volume) {}

  void tell(const std::string& table, std::uint64_t at, std::string what) {
    add_trouble(volume_.troubles, table, at, std::move(what));
  }

  /// Bytes from `at` on; empty when they are not in the image.
  std::vector<std::uint8_t> bytes(std::uint64_t at, std::uint64_t size);
  std::vector<std::uint8_t> sector(std::uint64_t number) {
    return bytes(number * image_sector, image_sector);
  }
  /// The same of a folder or another table, as much of it as may be read; tells when that is not
  /// all.
  std::vector<std::uint8_t> table(const std::string& name, std::uint64_t at, std::uint64_t size);

  /// Tells when the image is smaller than the volume states that it is.
  void check_size(const std::string& table, std::uint64_t at);

  void add_file(const std::string& table, std::uint64_t at, disc_file file);
  /// A folder that is found; told when it is one that was found before.
  void add_folder(const std::string& table, std::uint64_t at, waiting_folder folder);
  /// The next folder to be read; false: all were.
  bool next_folder(waiting_folder& folder);
  /// There are more files than are looked at; this was told.
  bool is_full() const { return full_; }
  /// Brings the lists into their order.
  void finish();

 private:
  bool has_room(const std::string& table, std::uint64_t at);

  byte_source& image_;
  image_volume& volume_;
  std::vector<waiting_folder> waiting_;
  std::set<std::uint64_t> known_;
  std::uint64_t allowance_ = std::uint64_t{16} * 1024 * 1024;  // bytes of tables in all
  bool full_ = false;
};

}  // namespace corvane
