#include "formats/stream_attributes.h"

#include <array>

namespace corvane {

namespace {

/// `count` bits of a byte, the highest of them bit `highest`.
std::uint8_t bits(std::uint8_t byte, int highest, int count) {
  return static_cast<std::uint8_t>(byte >> (highest + 1 - count) & ((1 << count) - 1));
}

bool bit(std::uint8_t byte, int which) {
  return (byte >> which & 1) != 0;
}

std::string stated_language(std::uint8_t type, std::uint8_t high, std::uint8_t low) {
  return type == 1 ? language_of(static_cast<std::uint16_t>(high << 8 | low)) : std::string();
}

bool is_letter(int c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

std::string_view video_attributes::standard() const {
  return standard_code == 0 ? "NTSC" : standard_code == 1 ? "PAL" : "";
}

std::string_view video_attributes::aspect() const {
  return aspect_code == 0 ? "4:3" : aspect_code == 3 ? "16:9" : "";
}

int video_attributes::width() const {
  static constexpr std::array widths{720, 704, 352, 352};
  return size_code < widths.size() ? widths[size_code] : 0;
}

int video_attributes::height() const {
  if (size_code > 3 || standard_code > 1)
    return 0;
  return (standard_code == 1 ? 576 : 480) / (size_code == 3 ? 2 : 1);
}

std::string_view audio_attributes::format() const {
  static constexpr std::array<std::string_view, 8> names{"ac3",  "", "mp2", "mpeg2 extended",
                                                         "lpcm", "", "dts", ""};
  return coding < names.size() ? names[coding] : "";
}

int audio_attributes::sample_rate() const {
  return rate_code == 0 ? 48000 : rate_code == 1 ? 96000 : 0;
}

int audio_attributes::first_stream() const {
  static constexpr std::array streams{0x80, 0, 0xC0, 0xC0, 0xA0, 0, 0x88, 0};
  return coding < streams.size() ? streams[coding] : 0;
}

video_attributes read_video_attributes(std::span<const std::uint8_t, 2> bytes) {
  video_attributes video;
  video.coding = bits(bytes[0], 7, 2);
  video.standard_code = bits(bytes[0], 5, 2);
  video.aspect_code = bits(bytes[0], 3, 2);
  video.no_pan_scan = bit(bytes[0], 1);
  video.no_letterbox = bit(bytes[0], 0);
  video.line21_field1 = bit(bytes[1], 7);
  video.line21_field2 = bit(bytes[1], 6);
  video.size_code = bits(bytes[1], 5, 3);
  video.letterboxed = bit(bytes[1], 2);
  video.film = bit(bytes[1], 0);
  return video;
}

audio_attributes read_audio_attributes(std::span<const std::uint8_t, 8> bytes) {
  audio_attributes audio;
  audio.coding = bits(bytes[0], 7, 3);
  audio.multichannel_extension = bit(bytes[0], 4);
  audio.language_type = bits(bytes[0], 3, 2);
  audio.application = bits(bytes[0], 1, 2);
  audio.quantization = bits(bytes[1], 7, 2);
  audio.rate_code = bits(bytes[1], 5, 2);
  audio.channels = bits(bytes[1], 2, 3) + 1;
  audio.language = stated_language(audio.language_type, bytes[2], bytes[3]);
  audio.code_extension = bytes[5];
  return audio;
}

subpicture_attributes read_subpicture_attributes(std::span<const std::uint8_t, 6> bytes) {
  subpicture_attributes subpicture;
  subpicture.coding = bits(bytes[0], 7, 3);
  subpicture.language_type = bits(bytes[0], 1, 2);
  subpicture.language = stated_language(subpicture.language_type, bytes[2], bytes[3]);
  subpicture.code_extension = bytes[5];
  return subpicture;
}

std::string language_of(std::uint16_t code) {
  const int high = code >> 8, low = code & 0xFF;
  if (!is_letter(high) || !is_letter(low))
    return {};
  return {static_cast<char>(high), static_cast<char>(low)};
}

}  // namespace corvane
