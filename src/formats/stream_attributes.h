// What the tables of a disc state of its video, audio and subpicture streams.
//
// The numbers are the disc's own codes; functions say what they mean, and give nothing ("", 0) for
// a code that means nothing. Reading cannot fail: every pattern of bytes is some attributes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct video_attributes {
  std::uint8_t coding = 0;         ///< 0: MPEG-1, 1: MPEG-2
  std::uint8_t standard_code = 0;  ///< 0: NTSC, 1: PAL
  std::uint8_t aspect_code = 0;    ///< 0: 4:3, 3: 16:9
  bool no_pan_scan = false;        ///< a 4:3 screen may not show 16:9 cut at the sides
  bool no_letterbox = false;       ///< nor with black bars
  bool line21_field1 = false;      ///< closed captions in the first field, in the second
  bool line21_field2 = false;
  std::uint8_t size_code = 0;  ///< 0: 720, 1: 704, 2: 352 wide, 3: 352 wide of half the lines
  bool letterboxed = false;    ///< the picture itself has black bars
  bool film = false;           ///< PAL: its fields are of one moment

  std::string_view standard() const;  ///< "NTSC", "PAL"
  std::string_view aspect() const;    ///< "4:3", "16:9"
  int width() const;                  ///< pixels: 720, 704, 352
  int height() const;                 ///< lines: 480, 576, 240, 288

  bool operator==(const video_attributes&) const = default;
};

struct audio_attributes {
  std::uint8_t coding = 0;  ///< 0: AC-3, 2: MPEG-1, 3: MPEG-2 extended, 4: LPCM, 6: DTS
  bool multichannel_extension = false;
  std::uint8_t language_type = 0;   ///< 0: none stated, 1: `language`
  std::uint8_t application = 0;     ///< 0: none stated, 1: karaoke, 2: surround
  std::uint8_t quantization = 0;    ///< LPCM: 0, 1, 2: 16, 20, 24 bits; MPEG: 1: with dynamic range
  std::uint8_t rate_code = 0;       ///< 0: 48 kHz, 1: 96 kHz
  int channels = 0;                 ///< 1 to 8
  std::string language;             ///< two letters; empty: none is stated
  std::uint8_t code_extension = 0;  ///< 1: normal, 2: for the visually impaired, 3 and 4: comments

  std::string_view format() const;  ///< "ac3", "mp2", "mpeg2 extended", "lpcm", "dts"
  int sample_rate() const;          ///< 48000, 96000
  /// The stream's first number in a program stream, to which the number of the chain's control
  /// word is added: 0x80 (AC-3), 0x88 (DTS), 0xA0 (LPCM) of private stream 1, 0xC0 (MPEG) of its
  /// own.
  int first_stream() const;

  bool operator==(const audio_attributes&) const = default;
};

struct subpicture_attributes {
  std::uint8_t coding = 0;          ///< 0: run lengths of 2 bits
  std::uint8_t language_type = 0;   ///< 0: none stated, 1: `language`
  std::string language;             ///< two letters; empty: none is stated
  std::uint8_t code_extension = 0;  ///< 1: normal, 2: large, 5: captions, 9: forced, 13: comments

  bool operator==(const subpicture_attributes&) const = default;
};

/// Of the menus or of the titles of a titleset, or of the video manager's menus.
struct stream_attributes {
  video_attributes video;
  std::vector<audio_attributes> audio;             ///< at most 8
  std::vector<subpicture_attributes> subpictures;  ///< at most 32

  bool operator==(const stream_attributes&) const = default;
};

video_attributes read_video_attributes(std::span<const std::uint8_t, 2> bytes);
audio_attributes read_audio_attributes(std::span<const std::uint8_t, 8> bytes);
subpicture_attributes read_subpicture_attributes(std::span<const std::uint8_t, 6> bytes);

/// Two letters of a language code; empty for 0, for FFFF ("none"), and for bytes that are no
/// letters of ASCII.
std::string language_of(std::uint16_t code);

}  // namespace corvane
