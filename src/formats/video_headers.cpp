#include "formats/video_headers.h"

#include <array>
#include <utility>

namespace corvane {

namespace {

// extension_start_code_identifier: the first four bits of an extension.
constexpr int sequence_extension_id = 1;
constexpr int sequence_display_extension_id = 2;
constexpr int picture_coding_extension_id = 8;

// bit_rate_value of MPEG-1 when it is variable.
constexpr std::uint32_t variable_bit_rate = 0x3FFFF;

// frame_rate_code 1 to 8.
constexpr std::array<std::pair<int, int>, 8> rates{
    {{24000, 1001}, {24, 1}, {25, 1}, {30000, 1001}, {30, 1}, {50, 1}, {60000, 1001}, {60, 1}}};

// MPEG-1 numbers the shapes of pixels, MPEG-2 the shapes of the screen; what MPEG-1 calls 8 and 12
// are the pixels of a 4:3 screen of 625 and 525 lines, 3 and 6 those of a 16:9 one.
void set_proportions(video_shape& shape) {
  const int code = shape.aspect_code;
  const bool wide = shape.mpeg2 ? code == 3 : code == 3 || code == 6;
  const bool narrow = shape.mpeg2 ? code == 2 : code == 8 || code == 12;
  const bool widest = shape.mpeg2 && code == 4;
  shape.aspect_width = wide ? 16 : narrow ? 4 : widest ? 221 : 0;
  shape.aspect_height = wide ? 9 : narrow ? 3 : widest ? 100 : 0;
}

}  // namespace

stored_size read_stored_size(const std::uint8_t* bytes) {
  // Twelve bits of width, twelve of height.
  return {bytes[0] << 4 | bytes[1] >> 4, (bytes[1] & 0x0F) << 8 | bytes[2]};
}

std::optional<video_shape> read_sequence_header(const std::uint8_t* bytes) {
  video_shape shape;
  const stored_size size = read_stored_size(bytes);
  shape.width = size.width;
  shape.height = size.height;
  shape.aspect_code = bytes[3] >> 4;
  const unsigned rate = bytes[3] & 0x0Fu;
  const bool marker = (bytes[6] & 0x20) != 0;
  if (shape.width == 0 || shape.height == 0 || shape.aspect_code == 0 || shape.aspect_code == 15 ||
      rate == 0 || rate > rates.size() || !marker)
    return std::nullopt;
  shape.rate_numerator = rates.at(rate - 1).first;
  shape.rate_denominator = rates.at(rate - 1).second;
  shape.progressive_sequence = true;
  set_proportions(shape);
  return shape;
}

bool read_sequence_extension(const std::uint8_t* bytes, video_shape& shape) {
  if (bytes[0] >> 4 != sequence_extension_id)
    return false;
  shape.mpeg2 = true;
  set_proportions(shape);
  shape.progressive_sequence = (bytes[1] & 0x08) != 0;
  shape.width |= ((bytes[1] & 0x01) << 1 | bytes[2] >> 7) << 12;
  shape.height |= ((bytes[2] >> 5) & 0x03) << 12;
  shape.rate_numerator *= ((bytes[5] >> 5) & 0x03) + 1;
  shape.rate_denominator *= (bytes[5] & 0x1F) + 1;
  return true;
}

std::optional<std::uint64_t> video_demands::bit_rate() const {
  if (!mpeg2 && bit_rate_value == variable_bit_rate)
    return std::nullopt;
  return std::uint64_t{400} * bit_rate_value;
}

video_demands read_video_demands(const std::uint8_t* bytes) {
  video_demands demands;
  demands.bit_rate_value =
      std::uint32_t{bytes[4]} << 10 | std::uint32_t{bytes[5]} << 2 | std::uint32_t{bytes[6]} >> 6;
  demands.vbv_value = (bytes[6] & 0x1Fu) << 5 | std::uint32_t{bytes[7]} >> 3;
  return demands;
}

bool read_demands_extension(const std::uint8_t* bytes, video_demands& demands) {
  if (bytes[0] >> 4 != sequence_extension_id)
    return false;
  demands.mpeg2 = true;
  demands.profile_and_level = (bytes[0] & 0x0F) << 4 | bytes[1] >> 4;
  demands.chroma_format = (bytes[1] >> 1) & 0x03;
  demands.bit_rate_value |= ((bytes[2] & 0x1Fu) << 7 | std::uint32_t{bytes[3]} >> 1) << 18;
  demands.vbv_value |= std::uint32_t{bytes[4]} << 10;
  demands.low_delay = (bytes[5] & 0x80) != 0;
  return true;
}

std::optional<stored_size> read_display_size(const std::uint8_t* bytes) {
  if (bytes[0] >> 4 != sequence_display_extension_id)
    return std::nullopt;
  // Three bytes of colour description may stand before it; a marker bit is between the two numbers.
  const std::uint8_t* const size = bytes + ((bytes[0] & 0x01) != 0 ? 4 : 1);
  return stored_size{size[0] << 6 | size[1] >> 2,
                     (size[1] & 0x01) << 13 | size[2] << 5 | size[3] >> 3};
}

group_header read_group_header(const std::uint8_t* bytes) {
  return {(bytes[3] & 0x40) != 0, (bytes[3] & 0x20) != 0};
}

picture_kind read_picture_kind(const std::uint8_t* bytes) {
  switch ((bytes[1] >> 3) & 0x07) {
    case 1:
      return picture_kind::intra;
    case 2:
      return picture_kind::predicted;
    case 3:
      return picture_kind::bidirectional;
    default:
      return picture_kind::other;
  }
}

int read_vbv_delay(const std::uint8_t* bytes) {
  return (bytes[1] & 0x07) << 13 | bytes[2] << 5 | bytes[3] >> 3;
}

std::optional<picture_extension> read_picture_extension(const std::uint8_t* bytes) {
  if (bytes[0] >> 4 != picture_coding_extension_id)
    return std::nullopt;
  picture_extension extension;
  extension.structure = static_cast<picture_extension::structure_kind>(bytes[2] & 0x03);
  extension.top_field_first = (bytes[3] & 0x80) != 0;
  extension.repeat_first_field = (bytes[3] & 0x02) != 0;
  return extension;
}

int shown_fields(const video_shape& shape, const picture_extension& extension) {
  if (!extension.repeat_first_field)
    return 2;
  if (!shape.progressive_sequence)
    return 3;
  return extension.top_field_first ? 6 : 4;
}

}  // namespace corvane
