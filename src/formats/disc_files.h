// The files of a disc, in a folder or in an image, read through one interface.
//
// Paths have "/" between folders, "VIDEO_TS/VIDEO_TS.IFO", in upper case whatever the folder's own
// names are. Reading can fail at any time (a disc is pulled out, a file is truncated): it then
// gives false.
#pragma once

#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Bytes that can be read in any order: an image file, or bytes that a test makes.
class byte_source {
 public:
  byte_source() = default;
  byte_source(const byte_source&) = delete;
  byte_source& operator=(const byte_source&) = delete;
  virtual ~byte_source() = default;

  virtual std::uint64_t size() const = 0;
  /// Fills all of `buffer` from byte `at` on. Returns false if it cannot, for want of bytes too;
  /// what is in the buffer is then undefined.
  virtual bool read(std::uint64_t at, std::span<std::uint8_t> buffer) = 0;
};

/// Bytes in memory, which must outlive it.
class memory_source : public byte_source {
 public:
  explicit memory_source(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  std::uint64_t size() const override { return bytes_.size(); }
  bool read(std::uint64_t at, std::span<std::uint8_t> buffer) override;

 private:
  std::span<const std::uint8_t> bytes_;
};

/// Fails when the file cannot be opened. The size is that at opening.
result<std::unique_ptr<byte_source>> open_bytes(std::string_view native_path);

struct disc_file {
  std::string path;
  std::uint64_t size = 0;          ///< bytes
  std::uint32_t first_sector = 0;  ///< of an image; 0 in a folder
};

class disc_files {
 public:
  disc_files() = default;
  disc_files(const disc_files&) = delete;
  disc_files& operator=(const disc_files&) = delete;
  virtual ~disc_files() = default;

  /// All files, sorted by path.
  virtual const std::vector<disc_file>& files() const = 0;
  /// Fills all of `buffer` from byte `at` of a file of `files()`. Returns false if it cannot.
  virtual bool read(const disc_file& file, std::uint64_t at, std::span<std::uint8_t> buffer) = 0;

  /// The file with that path, in any case of letters; null: none.
  const disc_file* find(std::string_view path) const;
};

/// A whole file. Fails when it is not there, larger than `limit` or cannot be read.
result<std::vector<std::uint8_t>> read_whole(disc_files& from, std::string_view path,
                                             std::uint64_t limit);

/// The files of a folder: those of its VIDEO_TS, or its own when it has none but holds a
/// VIDEO_TS.IFO itself. Names are taken in any case of letters. Fails when there is neither.
result<std::unique_ptr<disc_files>> open_folder(std::string_view native_folder);

/// What goes into an image of a folder: all files of it and of the folders in it. Paths are in the
/// case that they have there. Links are left out, for an image takes none. Fails when the folder
/// cannot be read.
result<std::unique_ptr<disc_files>> open_tree(std::string_view native_folder);

}  // namespace corvane
