// MPEG streams made bit by bit: small grey pictures of any kind and order, right and wrong.
#pragma once

#include "formats/video_headers.h"

#include <cstdint>
#include <string>

namespace corvane::media_test {

struct tiny_picture {
  picture_kind kind = picture_kind::intra;
  int grey = 128;  // brightness, 16 (black) to 235 (white)
  int temporal_reference = 0;
  picture_extension::structure_kind structure = picture_extension::frame;
  bool top_field_first = false;
  bool repeat_first_field = false;
  int slices = -1;  // how many; -1: all
};

/// Builds a stream in `bytes`. Sizes are multiples of 32.
class tiny_stream {
 public:
  explicit tiny_stream(bool mpeg2 = true, int width = 32, int height = 32)
      : mpeg2_(mpeg2), width_(width), height_(height) {}

  std::string bytes;

  tiny_stream& sequence(int rate_code = 3, bool progressive = false);
  tiny_stream& group(bool closed = true);
  tiny_stream& add(const tiny_picture& p);
  /// A picture by the letter of its kind (I, P, B; D is one of another kind) and its brightness.
  tiny_stream& add(char kind, int grey, int temporal_reference = 0);
  tiny_stream& end();
  /// The size from the next sequence header on.
  tiny_stream& resize(int width, int height);

 private:
  void put(std::uint32_t value, int bits);
  void align();
  void code(std::uint8_t last);
  void slice(const tiny_picture& p, int row);

  bool mpeg2_;
  int width_;
  int height_;
  int free_bits_ = 0;  // of the last byte
};

/// The brightness of a stream's grey as a byte of red, green or blue.
int shown_grey(int grey);

/// The stream in the packets of a program stream: `payload` bytes a packet, with packets of other
/// streams and padding between them.
std::string in_packets(const std::string& stream, std::size_t payload, bool mpeg2 = true);

}  // namespace corvane::media_test
