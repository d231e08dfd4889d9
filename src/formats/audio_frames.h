// The header of one frame of sound: AC-3, its successor E-AC-3, and MPEG audio (MPEG-1 and the
// lower sampling rates of MPEG-2, layers I to III). Each frame tells its own length, so a stream is
// walked from header to header without looking at the sound.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace corvane {

enum class audio_kind : std::uint8_t {
  unknown,
  ac3,
  eac3,
  mpeg_layer_1,
  mpeg_layer_2,
  mpeg_layer_3,
  // Those that no reader here takes frames from; they are known by their first bytes alone.
  ac3_swapped,  ///< AC-3 with the two bytes of each word exchanged (little-endian)
  aac,          ///< with ADTS headers
  dts,
  wav,  ///< RIFF or RF64, whatever is in it
};

/// As it is called in a sentence: "AC-3", "MPEG audio layer II"; "unknown" for that.
std::string_view name_of(audio_kind kind);

/// What the header of a frame tells.
struct audio_frame {
  audio_kind kind = audio_kind::unknown;
  bool mpeg2 = false;  ///< of MPEG audio: the lower sampling rates of MPEG-2
  /// As it stands: acmod of AC-3 (0: two channels that are two programmes), mode of MPEG audio
  /// (0 stereo, 1 joint stereo, 2 two programmes, 3 mono).
  std::uint8_t mode = 0;
  std::uint8_t service = 0;    ///< bsmod of AC-3 (0: all of the sound)
  int sample_rate = 0;         ///< in Hz
  int bit_rate = 0;            ///< in bit/s; of E-AC-3, which does not say, rounded down
  int channels = 0;            ///< the one for low frequencies included
  bool low_frequency = false;  ///< whether there is such a one
  int samples = 0;       ///< of each channel; 0 when it only adds channels to the frame before
  std::size_t size = 0;  ///< in bytes, header included

  bool operator==(const audio_frame&) const = default;
};

/// A header is read from as many bytes at most; no frame is shorter.
inline constexpr std::size_t audio_header_bytes = 7;
/// No frame is longer.
inline constexpr std::size_t largest_audio_frame = 4096;

/// The frame of AC-3 or E-AC-3 that begins with the first byte; nullopt if none begins there, or
/// its header is not there as a whole (7 bytes).
std::optional<audio_frame> read_ac3_frame(std::span<const std::uint8_t> bytes);

/// The same of a frame of MPEG audio (4 bytes). Free format, whose frames do not tell their length,
/// is none.
std::optional<audio_frame> read_mpeg_audio_frame(std::span<const std::uint8_t> bytes);

/// Either of them.
std::optional<audio_frame> read_audio_frame(std::span<const std::uint8_t> bytes);

/// What a file is by its first bytes (16 are enough) when no frame of the kinds above is in it.
audio_kind kind_of_first_bytes(std::span<const std::uint8_t> bytes);

}  // namespace corvane
