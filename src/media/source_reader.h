// A reader of files that people have: what is in them, pictures and sound of them. It sees bytes,
// never a path, so nothing that such a file names can be opened by it.
//
// Readers come from a module (source_module.h), which alone sees FFmpeg.
#pragma once

#include "formats/source_facts.h"
#include "media/pcm_sound.h"
#include "media/picture.h"
#include "platform/result.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace corvane {

/// The bytes of one file, in any order.
class source_bytes {
 public:
  source_bytes() = default;
  source_bytes(const source_bytes&) = delete;
  source_bytes& operator=(const source_bytes&) = delete;
  virtual ~source_bytes() = default;

  virtual std::int64_t size() const = 0;

  /// Reads up to `count` bytes from `position`, fewer at the end of the file. Returns how many; not
  /// set if they cannot be read.
  virtual std::optional<std::size_t> read(std::int64_t position, std::uint8_t* to,
                                          std::size_t count) = 0;
};

/// How much is spent on a file before it is given up, or what is known by then is taken.
struct source_limits {
  std::int64_t bytes = std::int64_t{512} * 1024 * 1024;  ///< read
  std::chrono::milliseconds time{15'000};
};

/// What a reader says of a file that is of a known kind, but cannot be opened.
inline constexpr const char* damaged_source = "it is damaged, or not all of it is there";

class source_reader {
 public:
  source_reader() = default;
  source_reader(const source_reader&) = delete;
  source_reader& operator=(const source_reader&) = delete;
  virtual ~source_reader() = default;

  /// As `probe_source`, `source_picture` and `source_sound` (source_probe.h), of bytes.
  virtual result<source_facts> facts(source_bytes& bytes, const source_limits& limits) = 0;
  virtual result<picture> picture_at(source_bytes& bytes, const source_limits& limits,
                                     double seconds, int most_width, int most_height) = 0;
  virtual result<pcm_sound> sound(source_bytes& bytes, const source_limits& limits,
                                  double most_seconds) = 0;
};

/// Fails when the module that has the reader is missing or cannot be loaded.
result<std::unique_ptr<source_reader>> make_source_reader();

}  // namespace corvane
