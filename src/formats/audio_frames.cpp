#include "formats/audio_frames.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

using std::string_view_literals::operator""sv;

constexpr std::array<int, 3> sample_rates = {48000, 44100, 32000};  // of AC-3, by fscod
constexpr std::array<int, 3> mpeg_sample_rates = {44100, 48000, 32000};
constexpr int samples_of_block = 256;

// bytes[6] of AC-3 begins with acmod; up to two fields of two bits for the levels of the centre and
// surround channels, or for surround in two channels, stand between it and lfeon.
bool low_frequency_of_ac3(std::uint8_t byte, int acmod) {
  int bit = 3;
  if ((acmod & 1) != 0 && acmod != 1)
    bit += 2;
  if ((acmod & 4) != 0)
    bit += 2;
  if (acmod == 2)
    bit += 2;
  return (byte >> (7 - bit) & 1) != 0;
}

int channels_of_ac3(int acmod, bool low_frequency) {
  constexpr std::array<int, 8> channels = {2, 1, 2, 3, 3, 4, 4, 5};
  return channels.at(static_cast<std::size_t>(acmod)) + (low_frequency ? 1 : 0);
}

std::optional<audio_frame> read_plain_ac3(std::span<const std::uint8_t> bytes, int bsid) {
  constexpr std::array<int, 19> kilobits = {32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                            192, 224, 256, 320, 384, 448, 512, 576, 640};
  const std::size_t rate = bytes[4] >> 6;
  const std::size_t size_code = bytes[4] & 0x3F;
  if (rate >= sample_rates.size() || size_code / 2 >= kilobits.size())
    return std::nullopt;
  const int kilobit = kilobits.at(size_code / 2);
  // Of one frame in 16-bit words. At 44.1 kHz it is no whole number: the code tells which of the
  // two.
  const std::array<int, 3> words = {
      kilobit * 2, kilobit * 320 / 147 + static_cast<int>(size_code % 2), kilobit * 3};
  audio_frame frame;
  frame.kind = audio_kind::ac3;
  frame.mode = bytes[6] >> 5;
  frame.service = bytes[5] & 7;
  frame.low_frequency = low_frequency_of_ac3(bytes[6], frame.mode);
  frame.channels = channels_of_ac3(frame.mode, frame.low_frequency);
  // bsid 9 and 10 stand for half and a quarter of the rates.
  const int divisor = 1 << (std::max(bsid, 8) - 8);
  frame.sample_rate = sample_rates.at(rate) / divisor;
  frame.bit_rate = kilobit * 1000 / divisor;
  frame.samples = 6 * samples_of_block;
  frame.size = 2 * static_cast<std::size_t>(words.at(rate));
  return frame;
}

std::optional<audio_frame> read_eac3(std::span<const std::uint8_t> bytes) {
  constexpr std::array<int, 4> blocks = {1, 2, 3, 6};
  const int stream_type = bytes[2] >> 6;
  const int substream = bytes[2] >> 3 & 7;
  const std::size_t rate = bytes[4] >> 6;
  const std::size_t second = bytes[4] >> 4 & 3;  // of a lower rate; else the number of blocks
  const bool lower_rate = rate == sample_rates.size();
  if (stream_type == 3 || (lower_rate && second >= sample_rates.size()))
    return std::nullopt;
  audio_frame frame;
  frame.kind = audio_kind::eac3;
  frame.mode = bytes[4] >> 1 & 7;
  frame.low_frequency = (bytes[4] & 1) != 0;
  frame.channels = channels_of_ac3(frame.mode, frame.low_frequency);
  frame.sample_rate = lower_rate ? sample_rates.at(second) / 2 : sample_rates.at(rate);
  frame.size = 2 * (static_cast<std::size_t>((bytes[2] & 7) << 8 | bytes[3]) + 1);
  if (frame.size < audio_header_bytes)
    return std::nullopt;
  const int samples = samples_of_block * (lower_rate ? 6 : blocks.at(second));
  frame.bit_rate =
      static_cast<int>(8 * static_cast<std::int64_t>(frame.size) * frame.sample_rate / samples);
  // A dependent frame, or one of a second programme, is heard together with the one before.
  frame.samples = stream_type == 1 || substream != 0 ? 0 : samples;
  return frame;
}

// In kbit/s by index 1 to 14 of the header; of a layer of MPEG-1, or of MPEG-2.
int kilobits_of_mpeg(bool mpeg2, int layer, std::size_t index) {
  using rates = std::array<int, 14>;
  constexpr rates one_1 = {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
  constexpr rates one_2 = {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
  constexpr rates one_3 = {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
  constexpr rates two_1 = {32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
  constexpr rates two_2 = {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
  if (mpeg2)
    return (layer == 1 ? two_1 : two_2).at(index - 1);
  return (layer == 1 ? one_1 : layer == 2 ? one_2 : one_3).at(index - 1);
}

bool begins_with(std::span<const std::uint8_t> bytes, std::string_view text, std::size_t from = 0) {
  return bytes.size() >= from + text.size() &&
         std::equal(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(from),
                    [](char c, std::uint8_t byte) { return static_cast<std::uint8_t>(c) == byte; });
}

}  // namespace

std::string_view name_of(audio_kind kind) {
  switch (kind) {
    case audio_kind::unknown:
      break;
    case audio_kind::ac3:
      return "AC-3";
    case audio_kind::eac3:
      return "E-AC-3";
    case audio_kind::mpeg_layer_1:
      return "MPEG audio layer I";
    case audio_kind::mpeg_layer_2:
      return "MPEG audio layer II";
    case audio_kind::mpeg_layer_3:
      return "MPEG audio layer III";
    case audio_kind::ac3_swapped:
      return "AC-3 with swapped bytes";
    case audio_kind::aac:
      return "AAC";
    case audio_kind::dts:
      return "DTS";
    case audio_kind::wav:
      return "WAV";
  }
  return "unknown";
}

std::optional<audio_frame> read_ac3_frame(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < audio_header_bytes || bytes[0] != 0x0B || bytes[1] != 0x77)
    return std::nullopt;
  const int bsid = bytes[5] >> 3;
  if (bsid <= 10)
    return read_plain_ac3(bytes, bsid);
  return bsid <= 16 ? read_eac3(bytes) : std::nullopt;
}

std::optional<audio_frame> read_mpeg_audio_frame(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < 4 || bytes[0] != 0xFF || (bytes[1] & 0xF0) != 0xF0)
    return std::nullopt;
  const int layer = 4 - (bytes[1] >> 1 & 3);
  const std::size_t rate = bytes[2] >> 4;
  const std::size_t sample_rate = bytes[2] >> 2 & 3;
  if (layer == 4 || rate == 0 || rate == 15 || sample_rate == 3 || (bytes[3] & 3) == 2)
    return std::nullopt;
  audio_frame frame;
  frame.kind = layer == 1   ? audio_kind::mpeg_layer_1
               : layer == 2 ? audio_kind::mpeg_layer_2
                            : audio_kind::mpeg_layer_3;
  frame.mpeg2 = (bytes[1] & 8) == 0;
  frame.mode = bytes[3] >> 6;
  frame.channels = frame.mode == 3 ? 1 : 2;
  frame.sample_rate = mpeg_sample_rates.at(sample_rate) / (frame.mpeg2 ? 2 : 1);
  frame.bit_rate = 1000 * kilobits_of_mpeg(frame.mpeg2, layer, rate);
  frame.samples = layer == 1 ? 384 : layer == 3 && frame.mpeg2 ? 576 : 1152;
  // In slots of four bytes, or of one; padding is one more.
  const int slot = layer == 1 ? 4 : 1;
  const int slots = frame.samples / 8 / slot * frame.bit_rate / frame.sample_rate;
  const int padding = bytes[2] >> 1 & 1;
  frame.size = static_cast<std::size_t>(slot) * static_cast<std::size_t>(slots + padding);
  return frame;
}

std::optional<audio_frame> read_audio_frame(std::span<const std::uint8_t> bytes) {
  if (bytes.empty())
    return std::nullopt;
  return bytes[0] == 0xFF ? read_mpeg_audio_frame(bytes) : read_ac3_frame(bytes);
}

audio_kind kind_of_first_bytes(std::span<const std::uint8_t> bytes) {
  if ((begins_with(bytes, "RIFF") || begins_with(bytes, "RF64")) && begins_with(bytes, "WAVE", 8))
    return audio_kind::wav;
  // The sync word of DTS, in words of 16 or of 14 bits, either byte first.
  for (const std::string_view sync :
       {"\x7F\xFE\x80\x01"sv, "\xFE\x7F\x01\x80"sv, "\x1F\xFF\xE8\x00"sv, "\xFF\x1F\x00\xE8"sv})
    if (begins_with(bytes, sync))
      return audio_kind::dts;
  if (begins_with(bytes, "\x77\x0B"))
    return audio_kind::ac3_swapped;
  // ADTS: the sync word of MPEG audio with layer 0, and a sampling rate.
  if (bytes.size() >= 3 && bytes[0] == 0xFF && (bytes[1] & 0xF6) == 0xF0 &&
      (bytes[2] >> 2 & 15) < 13)
    return audio_kind::aac;
  return audio_kind::unknown;
}

}  // namespace corvane
