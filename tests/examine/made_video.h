// MPEG video streams made for tests: right headers, and slices that hold nothing to decode. What a
// test wants to be wrong is left out or written by raw().
#pragma once

#include "formats/video_headers.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane::examine_test {

struct made_sequence {
  bool mpeg2 = true;
  int width = 720, height = 576;
  int aspect_code = 2;
  int rate_code = 3;  // 25
  std::uint32_t bit_rate_value = 20'000;
  std::uint32_t vbv_value = 112;
  int profile_and_level = 0x48;
  int chroma_format = 1;
  bool progressive = false;
  bool low_delay = false;
  std::optional<stored_size> display_size;
};

struct made_picture {
  char kind = 'I';  // I, P, B or D
  picture_extension::structure_kind structure = picture_extension::frame;
  bool top_field_first = false;
  bool repeat_first_field = false;
  int vbv_delay = 0x1234;
  bool extension = true;  // MPEG-2's
  std::size_t size = 0;   // in bytes, headers in front of it not counted; 0: small
  std::optional<std::vector<int>> rows = {};  // of the slices; all of MPEG-2, the first of MPEG-1
};

/// Builds a stream in `bytes`. A place in it is the size that `bytes` has there.
class video_maker {
 public:
  explicit video_maker(made_sequence sequence = {}) : sequence_(sequence) {}

  std::string bytes;

  std::uint64_t here() const { return bytes.size(); }

  video_maker& sequence();
  /// The next ones are of another kind.
  video_maker& sequence(const made_sequence& another);
  video_maker& group(bool closed = true, bool broken_link = false);
  video_maker& picture(const made_picture& one);
  /// Pictures by the letters of their kinds.
  video_maker& pictures(const std::string& kinds);
  /// Sequence header, GOP header and pictures.
  video_maker& whole_group(const std::string& kinds, bool closed = true);
  video_maker& end();
  video_maker& raw(const std::string& any);

 private:
  void code(std::uint8_t last);
  void put(std::uint32_t value, int bits);
  int rows(const made_picture& one) const;

  made_sequence sequence_;
  int free_bits_ = 0;  // of the last byte
};

}  // namespace corvane::examine_test
