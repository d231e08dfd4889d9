// The header fields of an MPEG-1 or MPEG-2 video stream that tell where its pictures are, how long
// each is shown, and what a decoder must be able to do. Every function takes the bytes that follow
// a start code.
#pragma once

#include <cstdint>
#include <optional>

namespace corvane {

/// Last bytes of the start codes 00 00 01 xx.
namespace start_code {
inline constexpr std::uint8_t picture = 0x00;
inline constexpr std::uint8_t first_slice = 0x01;
inline constexpr std::uint8_t last_slice = 0xAF;
inline constexpr std::uint8_t user_data = 0xB2;
inline constexpr std::uint8_t sequence_header = 0xB3;
inline constexpr std::uint8_t extension = 0xB5;
inline constexpr std::uint8_t sequence_end = 0xB7;
inline constexpr std::uint8_t group_of_pictures = 0xB8;
inline constexpr std::uint8_t first_system_code = 0xB9;  // of packets, not of video
}  // namespace start_code

/// How many bytes after its start code any of the functions below looks at.
inline constexpr int header_bytes = 8;

/// What a viewer must know before the first picture.
struct video_shape {
  int width = 0;  // of the stored picture, in pixels
  int height = 0;
  int rate_numerator = 0;  // pictures a second: 30000 / 1001
  int rate_denominator = 1;
  int aspect_code = 0;  // aspect_ratio_information as it stands
  int aspect_width =
      0;  // proportions it is to be shown in: 4 : 3; 0 : 0 when its pixels are square
  int aspect_height = 0;
  bool mpeg2 = false;
  bool progressive_sequence = false;

  bool operator==(const video_shape&) const = default;
};

struct stored_size {
  int width = 0, height = 0;  // in pixels

  bool operator==(const stored_size&) const = default;
};

/// The size in a sequence header, whatever the rest of it says.
stored_size read_stored_size(const std::uint8_t* bytes);

/// A sequence header (MPEG-1 and the first half of MPEG-2's); nullopt if its values are
/// forbidden ones, as in bytes that are no video.
std::optional<video_shape> read_sequence_header(const std::uint8_t* bytes);

/// Whether the extension is a sequence extension; it then completes the shape.
bool read_sequence_extension(const std::uint8_t* bytes, video_shape& shape);

/// What a decoder must be able to do.
struct video_demands {
  std::uint32_t bit_rate_value = 0;  // in units of 400 bits a second
  std::uint32_t vbv_value = 0;       // in units of 16,384 bits
  int profile_and_level = 0;         // as it stands in MPEG-2; 0 in MPEG-1
  int chroma_format = 1;             // 1: 4:2:0, 2: 4:2:2, 3: 4:4:4
  bool mpeg2 = false;
  bool low_delay = false;

  /// In bits a second; nullopt when it is stated as variable, which MPEG-1 has a value for.
  std::optional<std::uint64_t> bit_rate() const;
  /// Size of the decoder's buffer.
  std::uint64_t vbv_bytes() const { return std::uint64_t{2048} * vbv_value; }

  bool operator==(const video_demands&) const = default;
};

/// Of a sequence header whose values are allowed ones.
video_demands read_video_demands(const std::uint8_t* bytes);

/// Whether the extension is a sequence extension; it then completes the demands.
bool read_demands_extension(const std::uint8_t* bytes, video_demands& demands);

/// The size that a sequence display extension tells to show of each picture; nullopt if the
/// extension is another one.
std::optional<stored_size> read_display_size(const std::uint8_t* bytes);

/// The header of a group of pictures (GOP).
struct group_header {
  bool closed = false;       // no picture of the group needs one of the group before
  bool broken_link = false;  // the group before, which some need, was cut off
};

group_header read_group_header(const std::uint8_t* bytes);

enum class picture_kind : std::uint8_t { other, intra, predicted, bidirectional };

/// picture_coding_type of a picture header.
picture_kind read_picture_kind(const std::uint8_t* bytes);

/// vbv_delay of a picture header: how long the picture waits in the decoder's buffer, at 90 kHz;
/// `variable_vbv_delay` when the bit rate is variable.
int read_vbv_delay(const std::uint8_t* bytes);
inline constexpr int variable_vbv_delay = 0xFFFF;

/// What MPEG-2 adds to a picture header.
struct picture_extension {
  enum structure_kind : std::uint8_t { reserved, top_field, bottom_field, frame };
  structure_kind structure = frame;
  bool top_field_first = false;
  bool repeat_first_field = false;
};

/// The extension as a picture coding extension; nullopt if it is another one.
std::optional<picture_extension> read_picture_extension(const std::uint8_t* bytes);

/// For how many fields (half frames) a picture is shown.
int shown_fields(const video_shape& shape, const picture_extension& extension);

}  // namespace corvane
